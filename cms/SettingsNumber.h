// Numbers in the settings file.
#pragma once

#include <cstdint>
#include <string_view>

namespace zt {

// The decimal number that text begins with: leading white space and one sign are accepted, reading
// stops at the first character that is no digit 0 to 9. Without a digit it is 0; a number out of
// range is the nearest one in range.
std::int32_t SettingsNumber(std::wstring_view text);

} // namespace zt
