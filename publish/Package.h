// The package that a published folder becomes.
#pragma once

#include <string>

namespace zt {

// Name of a folder that does not exist yet, below the system's temporary folder, for a publication
// that becomes a package. The publishing component creates it.
std::wstring TemporaryDestination();

// Packs the published folder into the file packagePath and deletes the folder. Raises a message
// text; the folder is left only where the package could not be started.
void PackFolder(const std::wstring& folder, const std::wstring& packagePath);

} // namespace zt
