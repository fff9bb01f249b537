#include "publish/PropBag.h"

#include "components/Creation.h"
#include "framework/Exceptions.h"
#include "support/Registry.h"

#include <comdef.h>

#include <vector>

namespace zt {

namespace {

constexpr LCID EnglishUnitedStates = 1033;

// Numbers and texts have to mean the same for every user's regional settings.
HRESULT Convert(VARIANT* result, VARIANT& value, VARTYPE type) {
    return VariantChangeTypeEx(result, &value, EnglishUnitedStates, VARIANT_NOVALUEPROP, type);
}

KeyHolder OpenForReading(HKEY root, const std::wstring& name) {
    return root != nullptr ? OpenRegistryKey(root, name.c_str()) : nullptr;
}

KeyHolder CreateForWriting(HKEY root, const std::wstring& name) {
    HKEY key = nullptr;
    if (root == nullptr || RegCreateKeyExW(root, name.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                           KEY_ALL_ACCESS, nullptr, &key, nullptr) != ERROR_SUCCESS)
        return nullptr;
    return KeyHolder(key);
}

std::optional<Setting> ReadSetting(HKEY key, const wchar_t* name) {
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (key == nullptr ||
        RegQueryValueExW(key, name, nullptr, &type, nullptr, &size) != ERROR_SUCCESS)
        return std::nullopt;
    std::vector<std::uint8_t> bytes(size);
    if (RegQueryValueExW(key, name, nullptr, &type, bytes.data(), &size) != ERROR_SUCCESS)
        return std::nullopt;
    bytes.resize(size);
    if (type == REG_DWORD)
        return NumberOfStoredBytes(bytes);
    return TextOfStoredBytes(bytes);
}

_variant_t ValueOf(const Setting& setting) {
    if (const std::uint32_t* const number = std::get_if<std::uint32_t>(&setting))
        return _variant_t(static_cast<long>(*number), VT_I4);
    const std::wstring& text = std::get<std::wstring>(setting);
    VARIANT value = {};
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (value.bstrVal == nullptr)
        AfxThrowMemoryException();
    return _variant_t(value, false);
}

// Nothing for a value without a text form.
std::optional<Setting> SettingOf(VARIANT& value) {
    switch (value.vt) {
    case VT_I2:
        return static_cast<std::uint32_t>(value.iVal);
    case VT_BOOL:
        return static_cast<std::uint32_t>(value.boolVal);
    case VT_I4:
        return static_cast<std::uint32_t>(value.lVal);
    default:
        break;
    }
    _variant_t text;
    if (FAILED(Convert(&text, value, VT_BSTR)))
        return std::nullopt;
    return std::wstring(text.bstrVal != nullptr ? text.bstrVal : L"");
}

} // namespace

CPropBag::CPropBag(HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName, bool create)
    : m_keyName(keyName), m_userKey(create ? CreateForWriting(userRoot, m_keyName)
                                           : OpenForReading(userRoot, m_keyName)),
      m_defaultKey(OpenForReading(defaultRoot, m_keyName)) {}

HRESULT CPropBag::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IPropertyBag)
        return E_NOINTERFACE;
    *object = static_cast<IPropertyBag*>(this);
    AddRef();
    return S_OK;
}

ULONG CPropBag::AddRef() {
    return 5;
}

ULONG CPropBag::Release() {
    return 4;
}

HRESULT CPropBag::Read(LPCOLESTR name, VARIANT* value, IErrorLog*) {
    if (name == nullptr || value == nullptr)
        return E_POINTER;
    if (IsExtentName(name))
        return E_INVALIDARG;
    std::optional<Setting> setting = ReadSetting(m_userKey.get(), name);
    if (!setting.has_value())
        setting = ReadSetting(m_defaultKey.get(), name);
    if (!setting.has_value())
        return E_FAIL;

    _variant_t result = ValueOf(*setting);
    if (value->vt != VT_EMPTY && value->vt != result.vt) {
        VARIANT converted = {};
        if (SUCCEEDED(Convert(&converted, result, value->vt)))
            result.Attach(converted);
    }
    const HRESULT cleared = VariantClear(value);
    if (FAILED(cleared))
        return cleared;
    *value = result.Detach();
    return S_OK;
}

HRESULT CPropBag::Write(LPCOLESTR name, VARIANT* value) {
    if (name == nullptr || value == nullptr)
        return E_POINTER;
    if (value->vt == VT_DISPATCH || value->vt == VT_UNKNOWN)
        return E_FAIL;
    if (IsExtentName(name))
        return S_OK;
    const std::optional<Setting> setting = SettingOf(*value);
    if (!setting.has_value())
        return E_FAIL;
    if (DiffersFromDefault(*setting, ReadSetting(m_defaultKey.get(), name)))
        Store(name, *setting);
    else if (m_userKey != nullptr)
        RegDeleteValueW(m_userKey.get(), name);
    return S_OK;
}

void CPropBag::Store(const wchar_t* name, const Setting& setting) const {
    if (m_userKey == nullptr)
        return;
    if (const std::uint32_t* const number = std::get_if<std::uint32_t>(&setting)) {
        RegSetValueExW(m_userKey.get(), name, 0, REG_DWORD, reinterpret_cast<const BYTE*>(number),
                       sizeof(*number));
        return;
    }
    const std::wstring& text = std::get<std::wstring>(setting);
    RegSetValueExW(m_userKey.get(), name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                   static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

bool LoadSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName) {
    const auto persist = Query<IPersistPropertyBag>(component);
    if (!persist)
        return false;
    CPropBag bag(userRoot, defaultRoot, keyName, false);
    return bag.IsOpen() && SUCCEEDED(persist->Load(&bag, nullptr));
}

bool SaveSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName) {
    const auto persist = Query<IPersistPropertyBag>(component);
    if (!persist)
        return false;
    CPropBag bag(userRoot, defaultRoot, keyName, true);
    return bag.IsOpen() && SUCCEEDED(persist->Save(&bag, TRUE, TRUE));
}

void LoadProductSettings(IUnknown* component, const SettingsKeys& product, const wchar_t* keyName) {
    const KeyHolder user = OpenRegistryKey(HKEY_CURRENT_USER, product.user.c_str());
    if (user == nullptr)
        return;
    const KeyHolder machine = OpenRegistryKey(HKEY_LOCAL_MACHINE, product.machine.c_str());
    if (machine != nullptr)
        LoadSettings(component, user.get(), machine.get(), keyName);
}

} // namespace zt
