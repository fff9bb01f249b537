// The files of the specification that the kernel works with.
#pragma once

#include "config/XmlDocument.h"

#include <windows.h>

namespace zt {

class CZTInvisible;

// The element of a description file that holds the configuration of the run's language, else the
// document's root. E_FAIL (and no element) when neither is there.
HRESULT SelectConfigurationElement(const CZTInvisible& app, const XmlDocument& document,
                                   XmlElement& element);

// Full path of a file of the kernel's current specification: in the subfolder of the run's
// language where the file is there, else in the folder itself, whether it is there or not.
_bstr_t ResolveSpecificationFile(CZTInvisible& app, const wchar_t* fileName);

// Has the component library register itself (DllRegisterServer). False when the library cannot be
// loaded, has no such function or the function fails. The library does not stay loaded.
bool SelfRegisterLibrary(const wchar_t* path);

} // namespace zt
