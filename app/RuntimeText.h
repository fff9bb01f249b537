#pragma once

#include <string>
#include <string_view>

namespace zt {

// The text in the character set of the runtime's default locale: a character up to U+00FF becomes
// the byte of its value, any other one (a surrogate pair is one character) becomes "?". Nothing is
// ever left out, unlike in the runtime's own conversion, which stops at such a character.
std::string ToRuntimeText(std::wstring_view text);

} // namespace zt
