#include "app/ExchangeFolder.h"

#include "app/Paths.h"
#include "app/RegistryText.h"

#include <shlobj.h>

namespace zt {

namespace {

bool Exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

bool EnsureFolder(const std::wstring& path, bool namesFile) {
    const std::wstring folder = WithoutTrailingBackslash(namesFile ? FolderOfFile(path) : path);
    if (Exists(folder))
        return true;
    SHCreateDirectory(nullptr, folder.c_str());
    return Exists(folder);
}

std::wstring GetRegistryExchangePath() {
    return ReadRegistryText(HKEY_LOCAL_MACHINE, L"Software\\Morvenit\\CMSTC", L"ExchangePath");
}

} // namespace zt
