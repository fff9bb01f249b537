#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

namespace devinst {

// A step that failed; the message names it and the system's reason.
struct SetupError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// what: "cannot copy", say; subject: a path or name; code: an error code of the system or an
// HRESULT.
[[noreturn]] void ThrowSetupError(const std::string& what, const std::wstring& subject, DWORD code);

} // namespace devinst
