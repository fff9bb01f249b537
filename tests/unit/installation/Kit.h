// The set-up program's folder in the build tree, and the component libraries in it.
#pragma once

#include <windows.h>
#include <objbase.h>
#include <wrl/client.h>

#include <filesystem>
#include <memory>
#include <string>
#include <type_traits>

namespace devinst::test {

std::filesystem::path KitFolder();

// The value of a text below HKEY_LOCAL_MACHINE (name null: the key's own); "(none)" without one.
std::wstring MachineText(const std::wstring& key, const wchar_t* name);

// A component library, registered by its own DllRegisterServer for the lifetime of the object.
// HKEY_LOCAL_MACHINE must be redirected.
class RegisteredLibrary {
  public:
    explicit RegisteredLibrary(const std::wstring& name);

    // An object of the class that is registered under progId, made by the library's own factory.
    HRESULT Create(const std::wstring& progId, REFIID iid, void** object) const;
    HRESULT Create(REFCLSID classId, REFIID iid, void** object) const;

  private:
    struct Closer {
        void operator()(HMODULE module) const { FreeLibrary(module); }
    };
    std::unique_ptr<std::remove_pointer_t<HMODULE>, Closer> m_module;
};

} // namespace devinst::test
