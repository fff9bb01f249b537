// Reading of text values from the registry. Nothing here fails: what cannot be read is empty.
#pragma once

#include "support/Handles.h"

#include <string>

namespace zt {

// The key below root, opened for reading; an empty holder when it cannot be opened.
KeyHolder OpenRegistryKey(HKEY root, const wchar_t* path);

// The value, up to its first zero, when it is of the type REG_SZ; a missing terminator and a last
// odd byte do no harm. Empty for a missing key or value and for any other type.
std::wstring ReadRegistryText(HKEY root, const wchar_t* keyPath, const wchar_t* valueName);

} // namespace zt
