#include "installation/runtime/Registration.h"

#include <iterator>
#include <string>

namespace devinst {

namespace {

const std::wstring ClassesKey = L"Software\\Classes\\";

std::wstring IdText(REFCLSID classId) {
    wchar_t text[64] = {};
    StringFromGUID2(classId, text, static_cast<int>(std::size(text)));
    return text;
}

HRESULT SetText(const std::wstring& key, const wchar_t* name, const std::wstring& value) {
    return HRESULT_FROM_WIN32(static_cast<DWORD>(
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, (ClassesKey + key).c_str(), name, REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)))));
}

std::wstring LibraryPath(HINSTANCE library) {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length =
            GetModuleFileNameW(library, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

HRESULT RegisterClass(const std::wstring& library, const ComponentClass& component) {
    const std::wstring id = IdText(component.classId);
    const std::wstring key = L"CLSID\\" + id;
    const std::string name = component.className;
    HRESULT result = SetText(key, nullptr, std::wstring(name.begin(), name.end()));
    if (SUCCEEDED(result))
        result = SetText(key + L"\\InprocServer32", nullptr, library);
    if (SUCCEEDED(result))
        result = SetText(key + L"\\InprocServer32", L"ThreadingModel", L"Apartment");
    if (SUCCEEDED(result) && component.progId != nullptr)
        result = SetText(key + L"\\ProgID", nullptr, component.progId);
    if (SUCCEEDED(result) && component.progId != nullptr)
        result = SetText(std::wstring(component.progId) + L"\\CLSID", nullptr, id);
    if (SUCCEEDED(result) && component.controlStatus != 0)
        result = SetText(key + L"\\Control", nullptr, L"");
    if (SUCCEEDED(result) && component.controlStatus != 0)
        result =
            SetText(key + L"\\MiscStatus\\1", nullptr, std::to_wstring(component.controlStatus));
    return result;
}

// A key that is not there counts as deleted.
HRESULT DeleteTree(const std::wstring& key) {
    const LSTATUS status = RegDeleteTreeW(HKEY_LOCAL_MACHINE, (ClassesKey + key).c_str());
    return status == ERROR_FILE_NOT_FOUND ? S_OK : HRESULT_FROM_WIN32(static_cast<DWORD>(status));
}

HRESULT UnregisterClass(const ComponentClass& component) {
    const HRESULT result = DeleteTree(L"CLSID\\" + IdText(component.classId));
    if (FAILED(result) || component.progId == nullptr)
        return result;
    return DeleteTree(component.progId);
}

} // namespace

HRESULT RegisterClasses(HINSTANCE library, std::span<const ComponentClass> classes) {
    const std::wstring path = LibraryPath(library);
    for (const ComponentClass& component : classes) {
        const HRESULT result = RegisterClass(path, component);
        if (FAILED(result))
            return result;
    }
    return S_OK;
}

HRESULT UnregisterClasses(std::span<const ComponentClass> classes) {
    for (const ComponentClass& component : classes) {
        const HRESULT result = UnregisterClass(component);
        if (FAILED(result))
            return result;
    }
    return S_OK;
}

} // namespace devinst
