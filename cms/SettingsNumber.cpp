#include "cms/SettingsNumber.h"

#include <algorithm>
#include <limits>

namespace zt {
namespace {

constexpr std::wstring_view WhiteSpace = L" \t\n\v\f\r";

bool IsDigit(wchar_t character) {
    return character >= L'0' && character <= L'9';
}

} // namespace

std::int32_t SettingsNumber(std::wstring_view text) {
    using Limits = std::numeric_limits<std::int32_t>;
    text.remove_prefix(std::min(text.find_first_not_of(WhiteSpace), text.size()));
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

} // namespace zt
