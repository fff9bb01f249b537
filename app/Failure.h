// The one place that turns what the program raises on purpose into a message text.
#pragma once

#include <functional>
#include <optional>
#include <string>

namespace zt {

// Performs the step. Returns the message of the failure that it raised (a constant wide text, a
// CString, an OLE exception, whose message is cut to 1023 characters), none when it raised none. An
// exception of any other kind passes through.
std::optional<std::wstring> FailureOf(const std::function<void()>& step);

} // namespace zt
