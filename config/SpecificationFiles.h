// The files of a specification.
#pragma once

#include "components/contracts/Kernel.h"
#include "config/XmlDocument.h"

#include <string>

namespace zt {

// The element of a description file that holds the configuration of the language, else the
// document's root. E_FAIL (and no element) when neither is there.
HRESULT SelectConfigurationElement(const std::wstring& language, const XmlDocument& document,
                                   XmlElement& element);

// Full path of a file of the kernel's current specification: in the subfolder of the language where
// the file is there, else in the folder itself, whether it is there or not. fileName may be null.
_bstr_t ResolveSpecificationFile(KernelAdmin* kernel, const std::wstring& language,
                                 const wchar_t* fileName);

// Has the component library register itself (DllRegisterServer). False when the library cannot be
// loaded, has no such function or the function fails. The library does not stay loaded.
bool SelfRegisterLibrary(const wchar_t* path);

} // namespace zt
