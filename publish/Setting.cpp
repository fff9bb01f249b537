#include "publish/Setting.h"

#include "support/Text.h"

#include <algorithm>

namespace zt {

namespace {

bool IsEmptyText(const Setting& value) {
    const std::wstring* const text = std::get_if<std::wstring>(&value);
    return text != nullptr && text->empty();
}

} // namespace

bool IsExtentName(std::wstring_view propertyName) {
    return EqualIgnoringLatinCase(propertyName, L"_ExtentX") ||
           EqualIgnoringLatinCase(propertyName, L"_ExtentY");
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
