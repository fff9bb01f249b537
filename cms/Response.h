// The content-management client's answer to a message.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zt {

// The first fields of text, at most maximum, as views into it. Fields stand between bars; an empty
// one is no field, so several bars in a row separate like one.
std::vector<std::wstring_view> SplitFields(std::wstring_view text, std::size_t maximum);

// Nothing when the answer tells success, else the text that reports the failure to the user.
std::optional<std::wstring> FailureInResponse(std::wstring_view response);

} // namespace zt
