#include "installation/setup/Libraries.h"

#include "installation/runtime/Utf8.h"
#include "installation/setup/SetupError.h"

#include <algorithm>
#include <memory>
#include <type_traits>

namespace devinst {

namespace fs = std::filesystem;

namespace {

struct LibraryCloser {
    void operator()(HMODULE library) const { FreeLibrary(library); }
};
using LibraryHolder = std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryCloser>;

void CallExport(const fs::path& library, const char* name) {
    const LibraryHolder module(LoadLibraryW(library.c_str()));
    if (module == nullptr)
        ThrowSetupError("cannot load", library.wstring(), GetLastError());
    // By way of void*: the compiler warns of the direct cast from one function type to another.
    void* const address = reinterpret_cast<void*>(GetProcAddress(module.get(), name));
    if (address == nullptr)
        ThrowSetupError(std::string("no ") + name + " in", library.wstring(), GetLastError());
    const HRESULT result = reinterpret_cast<HRESULT(WINAPI*)()>(address)();
    if (FAILED(result))
        ThrowSetupError(std::string(name) + " failed in", library.wstring(),
                        static_cast<DWORD>(result));
}

} // namespace

std::vector<fs::path> ComponentLibraries(const fs::path& folder) {
    std::vector<fs::path> libraries;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        if (entry.path().filename().wstring().starts_with(L"zt-") &&
            entry.path().extension() == L".dll")
            libraries.push_back(entry.path());
    }
    if (libraries.empty())
        throw SetupError("no component library in " + ToUtf8(folder.wstring()));
    std::sort(libraries.begin(), libraries.end());
    return libraries;
}

void RegisterLibrary(const fs::path& library) {
    CallExport(library, "DllRegisterServer");
}

void UnregisterLibrary(const fs::path& library) {
    CallExport(library, "DllUnregisterServer");
}

} // namespace devinst
