#include "config/DataFolder.h"

#include "support/Registry.h"

#include <windows.h>
#include <shlobj.h>

#include <memory>
#include <optional>

namespace zt {

namespace {

struct ItemListFreer {
    void operator()(ITEMIDLIST* list) const { ILFree(list); }
};
using ItemList = std::unique_ptr<ITEMIDLIST, ItemListFreer>;

// The registry's data folder as it is stored, not expanded; an empty text is a folder like any
// other. None for a value that is missing, of another type, too long for a path or not terminated.
std::optional<std::wstring> StoredDataFolder() {
    const KeyHolder key = OpenRegistryKey(HKEY_LOCAL_MACHINE, L"Software\\Morvenit");
    wchar_t buffer[MAX_PATH] = {};
    DWORD size = sizeof(buffer);
    DWORD type = REG_NONE;
    if (key == nullptr ||
        RegQueryValueExW(key.get(), L"ZeltorDataFolder", nullptr, &type,
                         reinterpret_cast<BYTE*>(buffer), &size) != ERROR_SUCCESS ||
        (type != REG_SZ && type != REG_EXPAND_SZ))
        return std::nullopt;
    if (size == 0)
        return std::wstring();
    if (size % sizeof(wchar_t) != 0 || buffer[size / sizeof(wchar_t) - 1] != L'\0')
        return std::nullopt;
    return std::wstring(buffer);
}

std::wstring CommonApplicationDataFolder() {
    ITEMIDLIST* found = nullptr;
    const HRESULT located = SHGetSpecialFolderLocation(nullptr, CSIDL_COMMON_APPDATA, &found);
    const ItemList list(found);
    wchar_t path[MAX_PATH] = {};
    if (FAILED(located) || list == nullptr || !SHGetPathFromIDListW(list.get(), path))
        return {};
    return path;
}

} // namespace

std::wstring GetDataFolder() {
    const std::optional<std::wstring> stored = StoredDataFolder();
    return stored ? *stored : CommonApplicationDataFolder();
}

} // namespace zt
