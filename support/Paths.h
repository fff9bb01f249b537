// Paths as texts; nothing here asks the file system.
#pragma once

#include <string>
#include <string_view>

namespace zt {

// The path without one trailing backslash.
std::wstring WithoutTrailingBackslash(std::wstring_view path);

// The folder of the file, with its backslash; empty for a bare file name.
std::wstring FolderOfFile(std::wstring_view filePath);

} // namespace zt
