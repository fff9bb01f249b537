#include "tests/unit/installation/Kit.h"

#include "installation/setup/Libraries.h"

#include <stdexcept>

namespace devinst::test {

std::filesystem::path KitFolder() {
    std::wstring path(32768, L'\0');
    path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    return std::filesystem::path(path).parent_path().parent_path().parent_path() / L"installation";
}

std::wstring MachineText(const std::wstring& key, const wchar_t* name) {
    wchar_t text[1024] = {};
    DWORD size = sizeof(text);
    const LSTATUS status =
        RegGetValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, RRF_RT_REG_SZ, nullptr, text, &size);
    return status == ERROR_SUCCESS ? text : L"(none)";
}

RegisteredLibrary::RegisteredLibrary(const std::wstring& name) {
    const std::filesystem::path path = KitFolder() / name;
    RegisterLibrary(path);
    m_module.reset(LoadLibraryW(path.c_str()));
    if (m_module == nullptr)
        throw std::runtime_error("the library cannot be loaded");
}

HRESULT RegisteredLibrary::Create(const std::wstring& progId, REFIID iid, void** object) const {
    CLSID classId = {};
    const std::wstring text = MachineText(L"Software\\Classes\\" + progId + L"\\CLSID", nullptr);
    if (FAILED(CLSIDFromString(text.c_str(), &classId)))
        return REGDB_E_CLASSNOTREG;
    return Create(classId, iid, object);
}

HRESULT RegisteredLibrary::Create(REFCLSID classId, REFIID iid, void** object) const {
    void* const address =
        reinterpret_cast<void*>(GetProcAddress(m_module.get(), "DllGetClassObject"));
    Microsoft::WRL::ComPtr<IClassFactory> factory;
    const HRESULT result = reinterpret_cast<LPFNGETCLASSOBJECT>(address)(
        classId, IID_IClassFactory, reinterpret_cast<void**>(factory.GetAddressOf()));
    return FAILED(result) ? result : factory->CreateInstance(nullptr, iid, object);
}

} // namespace devinst::test
