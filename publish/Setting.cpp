#include "publish/Setting.h"

#include <algorithm>

namespace zt {

namespace {

wchar_t LowerLatin(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter + (L'a' - L'A')) : letter;
}

bool EqualsIgnoringCase(std::wstring_view left, std::wstring_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return LowerLatin(a) == LowerLatin(b); });
}

bool IsEmptyText(const Setting& value) {
    const std::wstring* const text = std::get_if<std::wstring>(&value);
    return text != nullptr && text->empty();
}

} // namespace

bool IsExtentName(std::wstring_view propertyName) {
    return EqualsIgnoringCase(propertyName, L"_ExtentX") ||
           EqualsIgnoringCase(propertyName, L"_ExtentY");
}

std::uint32_t NumberOfStoredBytes(const std::vector<std::uint8_t>& bytes) {
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < std::min<std::size_t>(bytes.size(), 4); ++i)
        number |= static_cast<std::uint32_t>(bytes[i]) << (8 * i);
    return number;
}

std::wstring TextOfStoredBytes(const std::vector<std::uint8_t>& bytes) {
    std::wstring text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        const auto character = static_cast<wchar_t>(bytes[i] | (bytes[i + 1] << 8));
        if (character == L'\0')
            break;
        text += character;
    }
    return text;
}

bool DiffersFromDefault(const Setting& value, const std::optional<Setting>& defaultValue) {
    return defaultValue.has_value() ? value != *defaultValue : !IsEmptyText(value);
}

} // namespace zt
