#include "app/RuntimeText.h"

#include <cstddef>
#include <cstdint>

namespace zt {

namespace {

bool IsSurrogatePairAt(std::wstring_view text, std::size_t i) {
    return i + 1 < text.size() && text[i] >= 0xD800 && text[i] <= 0xDBFF && text[i + 1] >= 0xDC00 &&
           text[i + 1] <= 0xDFFF;
}

} // namespace

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
