#pragma once

#include <cstdint>

namespace zt {

// The number that a text begins with, read as the platform's runtime reads one (_wtoi, _wtol):
// white space, a sign, decimal digits; whatever follows is ignored. 0 for a null text and for one
// without digits there; the nearest number that fits for one that does not.
std::int32_t IntegerOf(const wchar_t* text);

} // namespace zt
