#include "support/Text.h"

#include <algorithm>
#include <cstddef>
#include <cwctype>
#include <limits>

namespace zt {

namespace {

constexpr wchar_t LowerLatin(wchar_t character) {
    const bool isCapital = character >= L'A' && character <= L'Z';
    return isCapital ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

constexpr bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

bool IsSurrogatePairAt(std::wstring_view text, std::size_t i) {
    return i + 1 < text.size() && text[i] >= 0xD800 && text[i] <= 0xDBFF && text[i + 1] >= 0xDC00 &&
           text[i + 1] <= 0xDFFF;
}

} // namespace

bool EqualIgnoringLatinCase(std::wstring_view left, std::wstring_view right) {
    return std::ranges::equal(left, right, {}, LowerLatin, LowerLatin);
}

std::int32_t LeadingInteger(std::wstring_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    while (!text.empty() && std::iswspace(static_cast<std::wint_t>(text.front())) != 0)
        text.remove_prefix(1);
    const bool isNegative = text.starts_with(L'-');
    if (isNegative || text.starts_with(L'+'))
        text.remove_prefix(1);
    // One above the largest number has to stand for the smallest one's magnitude.
    constexpr std::int64_t Ceiling = std::int64_t{Limits::max()} + 1;
    std::int64_t number = 0;
    for (const wchar_t character : text) {
        if (!IsDigit(character))
            break;
        number = std::min(number * 10 + (character - L'0'), Ceiling);
    }
    const std::int64_t value = isNegative ? -number : number;
    return static_cast<std::int32_t>(std::min<std::int64_t>(value, Limits::max()));
}

std::string ToRuntimeText(std::wstring_view text) {
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool representable = static_cast<std::uint32_t>(text[i]) <= 0xFF;
        result += representable ? static_cast<char>(static_cast<unsigned char>(text[i])) : '?';
        if (IsSurrogatePairAt(text, i))
            ++i;
    }
    return result;
}

} // namespace zt
