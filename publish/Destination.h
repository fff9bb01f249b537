#pragma once

#include <string>

namespace zt {

// Name of a folder that does not exist yet, below the system's temporary folder, for a publication
// that becomes a package. The publishing component creates it.
std::wstring TemporaryDestination();

} // namespace zt
