// A component's settings: a property bag over the registry, and their loading and saving.
#pragma once

#include "publish/Setting.h"
#include "support/Handles.h"

#include <windows.h>
#include <ocidl.h>

#include <optional>
#include <string>

namespace zt {

// Serves the settings of one component from its subkey below two roots: the user's, which is read
// first and takes what is written, and the defaults', which is only read. Lives on the stack of
// its user: its reference counts are constants and never destroy it.
class CPropBag final : public IPropertyBag {
  public:
    // With create the user's subkey is made where it is missing and opened for writing; without it
    // both are opened for reading. A root may be null; a subkey that cannot be opened is none.
    CPropBag(HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName, bool create);
    CPropBag(const CPropBag&) = delete;
    CPropBag& operator=(const CPropBag&) = delete;

    // Whether at least one of the two subkeys is open.
    bool IsOpen() const { return m_userKey != nullptr || m_defaultKey != nullptr; }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // Gives the setting as VT_I4 or VT_BSTR, converted to the type of *value where that is not
    // VT_EMPTY and the conversion is possible. E_INVALIDARG for the names of an extent, E_FAIL for
    // a setting that is nowhere stored. The log is not used.
    HRESULT STDMETHODCALLTYPE Read(LPCOLESTR name, VARIANT* value, IErrorLog* log) override;

    // Stores the value for the user, or deletes the user's where the default says the same.
    // E_FAIL for an object and for what has no text form; what the registry refuses is not
    // reported.
    HRESULT STDMETHODCALLTYPE Write(LPCOLESTR name, VARIANT* value) override;

  private:
    void Store(const wchar_t* name, const Setting& setting) const;

    std::wstring m_keyName;
    KeyHolder m_userKey;
    KeyHolder m_defaultKey;
};

// Has the component (one with IPersistPropertyBag) load itself from its subkey below the two roots.
// Returns whether it did.
bool LoadSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName);

// Has the component save itself below the user's root, with all its properties.
bool SaveSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName);

// Names of the keys that hold a product's settings.
struct SettingsKeys {
    std::wstring user;    // below HKEY_CURRENT_USER
    std::wstring machine; // of the defaults, below HKEY_LOCAL_MACHINE
};

// Has the component load itself from its subkey below the product's keys. Where either of them is
// missing nothing is loaded; nothing is reported.
void LoadProductSettings(IUnknown* component, const SettingsKeys& product, const wchar_t* keyName);

} // namespace zt
