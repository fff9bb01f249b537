#pragma once

#include <windows.h>

namespace zt {

// Whether something of that name, a file or a folder, is there.
inline bool Exists(const wchar_t* path) {
    return path != nullptr && GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

} // namespace zt
