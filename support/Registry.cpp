#include "support/Registry.h"

namespace zt {

KeyHolder OpenRegistryKey(HKEY root, const wchar_t* path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return nullptr;
    return KeyHolder(key);
}

std::wstring RegistryValue::Text() const {
    return {reinterpret_cast<const wchar_t*>(bytes.data()), bytes.size() / sizeof(wchar_t)};
}

RegistryValue ReadRegistryValue(HKEY root, const wchar_t* keyPath, const wchar_t* valueName) {
    const KeyHolder key = OpenRegistryKey(root, keyPath);
    RegistryValue value;
    DWORD size = 0;
    if (key == nullptr || RegQueryValueExW(key.get(), valueName, nullptr, &value.type, nullptr,
                                           &size) != ERROR_SUCCESS)
        return {};
    value.bytes.resize(size);
    if (size != 0 && RegQueryValueExW(key.get(), valueName, nullptr, &value.type,
                                      value.bytes.data(), &size) != ERROR_SUCCESS)
        return {};
    value.bytes.resize(size);
    return value;
}

std::wstring ReadRegistryText(HKEY root, const wchar_t* keyPath, const wchar_t* valueName) {
    const RegistryValue value = ReadRegistryValue(root, keyPath, valueName);
    const std::wstring text = value.type == REG_SZ ? value.Text() : std::wstring();
    return text.substr(0, text.find(L'\0'));
}

} // namespace zt
