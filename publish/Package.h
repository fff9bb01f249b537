#pragma once

#include <string>

namespace zt {

// Packs the published folder into the file packagePath and deletes the folder. Raises a message
// text; the folder is left only where the package could not be begun.
void PackFolder(const std::wstring& folder, const std::wstring& packagePath);

} // namespace zt
