#include "config/IntegerText.h"

#include <algorithm>
#include <cwchar>
#include <limits>

namespace zt {

std::int32_t IntegerOf(const wchar_t* text) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (text == nullptr)
        return 0;
    const long long number = std::wcstoll(text, nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}

} // namespace zt
