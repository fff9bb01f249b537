#pragma once

#include <windows.h>

namespace zt {

class CZTInvisible;

// Publishes the open project beside its archive, into a folder or, when the run asks for a package,
// into one file. Returns a success code or raises a message text.
HRESULT PublishProject(CZTInvisible& app, const wchar_t* projectName);

} // namespace zt
