// Rules about texts that need no Windows call: case, numbers, the character set of the log.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zt {

// A text of the platform's, where null is the empty text.
inline std::wstring WideText(const wchar_t* text) {
    return text != nullptr ? text : L"";
}

// Whether both are the same but for the case of the letters A to Z.
bool EqualIgnoringLatinCase(std::wstring_view left, std::wstring_view right);

// The decimal number that the text begins with, as the platform's runtime reads one (_wtoi, _wtol):
// leading white space (as the runtime knows it) and one sign are accepted, reading stops at the
// first character that is no digit 0 to 9. 0 without a digit; a number out of range is the nearest
// one in range.
std::int32_t LeadingInteger(std::wstring_view text);

// The same; null is the empty text.
inline std::int32_t LeadingInteger(const wchar_t* text) {
    return LeadingInteger(text != nullptr ? std::wstring_view(text) : std::wstring_view());
}

// The text in the character set of the runtime's default locale: a character up to U+00FF becomes
// the byte of its value, any other one (a surrogate pair is one character) becomes "?". Nothing is
// ever left out, unlike in the runtime's own conversion, which stops at such a character.
std::string ToRuntimeText(std::wstring_view text);

} // namespace zt
