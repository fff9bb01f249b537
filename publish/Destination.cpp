#include "publish/Destination.h"

#include <windows.h>

namespace zt {

namespace {

constexpr DWORD PathSize = 260;

std::wstring TemporaryFolder() {
    wchar_t folder[PathSize] = {};
    const DWORD length = GetTempPathW(PathSize, folder);
    return length != 0 && length < PathSize ? folder : L"C:\\";
}

} // namespace

std::wstring TemporaryDestination() {
    wchar_t name[MAX_PATH] = {};
    // With the number 0 the system chooses one and takes the name by creating the file.
    if (GetTempFileNameW(TemporaryFolder().c_str(), L"KVE", 0, name) == 0)
        return L"C:\\__temp";
    DeleteFileW(name);
    return name;
}

} // namespace zt
