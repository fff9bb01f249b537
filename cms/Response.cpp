#include "cms/Response.h"

#include <algorithm>

namespace zt {
namespace {

constexpr std::size_t LastFieldOfInterest = 3;

wchar_t Folded(wchar_t character) {
    const bool isCapital = character >= L'A' && character <= L'Z';
    return isCapital ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

// Without regard to the case of the letters A to Z, which the expected words consist of.
bool IsWord(std::wstring_view field, std::wstring_view word) {
    return std::equal(field.begin(), field.end(), word.begin(), word.end(),
                      [](wchar_t left, wchar_t right) { return Folded(left) == Folded(right); });
}

} // namespace

std::vector<std::wstring_view> SplitFields(std::wstring_view text, std::size_t maximum) {
    std::vector<std::wstring_view> fields;
    std::size_t begin = text.find_first_not_of(L'|');
    while (begin != std::wstring_view::npos && fields.size() < maximum) {
        const std::size_t end = std::min(text.find(L'|', begin), text.size());
        fields.push_back(text.substr(begin, end - begin));
        begin = text.find_first_not_of(L'|', end);
    }
    return fields;
}

std::optional<std::wstring> FailureInResponse(std::wstring_view response) {
    const std::vector<std::wstring_view> fields = SplitFields(response, LastFieldOfInterest);
    if (fields.size() < 2 || !IsWord(fields[0], L"TOOL_RESPONSE_MESSAGE"))
        return L"Invalid response from CMS client";
    if (IsWord(fields[1], L"OK"))
        return std::nullopt;
    std::wstring failure = L"CMS client reported error: ";
    if (IsWord(fields[1], L"ERROR") && fields.size() > 2)
        failure += fields[2];
    return failure;
}

} // namespace zt
