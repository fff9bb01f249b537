#pragma once

#include "components/contracts/Kernel.h"

#include <comdef.h>

namespace zt {

// Reads the projects' and the publications' location from the configuration file (XML, null: the
// empty path), keeps the second in publicationLocation and hands the first to the kernel. Returns
// the kernel's result, or a failing code when the platform's XML parser is missing. Raises a
// message text for a missing or malformed file and for a location that the kernel refuses.
HRESULT ReadConfiguration(const wchar_t* path, KernelAdmin* kernel, _bstr_t& publicationLocation);

} // namespace zt
