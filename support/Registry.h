// Reading from the registry. Nothing here fails: what cannot be read is empty.
#pragma once

#include "support/Handles.h"

#include <string>
#include <vector>

namespace zt {

// The key below root, opened for reading; an empty holder when it cannot be opened.
KeyHolder OpenRegistryKey(HKEY root, const wchar_t* path);

struct RegistryValue {
    DWORD type = REG_NONE;
    std::vector<BYTE> bytes;

    // The bytes as characters, whatever they are; a last odd byte is ignored.
    std::wstring Text() const;
};

// The value as it is stored; REG_NONE without bytes for a missing key or value.
RegistryValue ReadRegistryValue(HKEY root, const wchar_t* keyPath, const wchar_t* valueName);

// The value, up to its first zero, when it is of the type REG_SZ; a missing terminator and a last
// odd byte are accepted. Empty for a missing key or value and for any other type.
std::wstring ReadRegistryText(HKEY root, const wchar_t* keyPath, const wchar_t* valueName);

} // namespace zt
