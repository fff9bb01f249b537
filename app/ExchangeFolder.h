// The folder that the content-management client shares with the program.
#pragma once

#include <string>

namespace zt {

// Makes sure that the folder (with namesFile: the folder of the file) exists, creating every
// missing level. Anything of that name counts, a file as well. Returns whether it exists now; an
// empty path does not. Only full paths are created.
bool EnsureFolder(const std::wstring& path, bool namesFile);

// The machine's exchange folder from the registry, empty when there is none.
std::wstring GetRegistryExchangePath();

} // namespace zt
