#include "cms/Response.h"

#include "support/Text.h"

#include <algorithm>

namespace zt {
namespace {

constexpr std::size_t LastFieldOfInterest = 3;

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
    if (fields.size() < 2 || !EqualIgnoringLatinCase(fields[0], L"TOOL_RESPONSE_MESSAGE"))
        return L"Invalid response from CMS client";
    if (EqualIgnoringLatinCase(fields[1], L"OK"))
        return std::nullopt;
    std::wstring failure = L"CMS client reported error: ";
    if (EqualIgnoringLatinCase(fields[1], L"ERROR") && fields.size() > 2)
        failure += fields[2];
    return failure;
}

} // namespace zt
