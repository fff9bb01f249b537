#include "support/Registry.h"

namespace zt {

KeyHolder OpenRegistryKey(HKEY root, const wchar_t* path) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(root, path, 0, KEY_READ, &key) != ERROR_SUCCESS)
        return nullptr;
    return KeyHolder(key);
}

std::wstring ReadRegistryText(HKEY root, const wchar_t* keyPath, const wchar_t* valueName) {
    const KeyHolder key = OpenRegistryKey(root, keyPath);
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (key == nullptr ||
        RegQueryValueExW(key.get(), valueName, nullptr, &type, nullptr, &size) != ERROR_SUCCESS ||
        type != REG_SZ)
        return {};
    std::wstring text(size / sizeof(wchar_t) + 1, L'\0');
    size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    if (RegQueryValueExW(key.get(), valueName, nullptr, &type, reinterpret_cast<BYTE*>(text.data()),
                         &size) != ERROR_SUCCESS ||
        type != REG_SZ)
        return {};
    text.resize(size / sizeof(wchar_t));
    return text.substr(0, text.find(L'\0'));
}

} // namespace zt
