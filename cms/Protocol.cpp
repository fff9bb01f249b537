#include "cms/Protocol.h"

#include "support/Text.h"

#include <algorithm>

namespace zt {
namespace {

constexpr std::size_t LastFieldOfInterest = 3;

std::size_t LengthInFrame(std::string_view frame) {
    const auto high = static_cast<unsigned char>(frame[0]);
    const auto low = static_cast<unsigned char>(frame[1]);
    return static_cast<std::size_t>(high) << 8 | low;
}

} // namespace

std::optional<std::string> BuildFrame(std::string_view text) {
    if (text.size() > MaximumFrameText)
        return std::nullopt;
    const std::size_t size = text.size() + FrameOverhead;
    std::string frame(size, '\0');
    frame[0] = static_cast<char>(size >> 8);
    frame[1] = static_cast<char>(size & 0xFF);
    text.copy(frame.data() + FrameLengthSize, text.size());
    return frame;
}

std::optional<std::string_view> TextInFrame(std::string_view received) {
    if (received.size() < MinimumAnswerSize)
        return std::nullopt;
    if (LengthInFrame(received) != received.size() || received.back() != '\0')
        return std::nullopt;
    const std::string_view text = received.substr(FrameLengthSize);
    return text.substr(0, text.find('\0'));
}

std::wstring BuildActionMessage(const wchar_t* action, const wchar_t* argument) {
    std::wstring message = L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|";
    message += action;
    if (argument != nullptr) {
        message += L'|';
        message += argument;
    }
    return message;
}

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
