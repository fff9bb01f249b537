#pragma once

#include <windows.h>

namespace zt {

class CZTInvisible;

// Reads the projects' and the publications' location from the configuration file (XML), hands the
// first to the kernel and keeps the second on the application object. Returns the kernel's result,
// or a failing code when the platform's XML parser is missing. Raises a message text for a missing
// or malformed file and for a location that the kernel refuses.
HRESULT LoadConfiguration(CZTInvisible& app, const wchar_t* configFilePath);

} // namespace zt
