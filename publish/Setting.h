// A component's stored setting, and the rules by which settings are read and kept. No Windows call.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace zt {

// A number or a text; nothing else is stored.
using Setting = std::variant<std::uint32_t, std::wstring>;

// Names of a hosted control's extent, in any case of letters; an extent is never stored.
bool IsExtentName(std::wstring_view propertyName);

// What the registry holds, little-endian. A number has at most four bytes, missing ones are zero;
// a text of two-byte characters ends at its first zero or at the last whole character.
std::uint32_t NumberOfStoredBytes(const std::vector<std::uint8_t>& bytes);
std::wstring TextOfStoredBytes(const std::vector<std::uint8_t>& bytes);

// Whether the value has to be stored for the user. One that says what holds without it has not:
// the default's equal (of the same kind, letters in the same case), or the empty text where there
// is no default.
bool DiffersFromDefault(const Setting& value, const std::optional<Setting>& defaultValue);

} // namespace zt
