#include "cms/Protocol.h"

#include "tests/fuzz/Targets.h"

#include <algorithm>
#include <limits>

namespace zt::fuzz {

namespace {

void CheckReceived(const std::string& received) {
    const std::optional<std::string_view> text = TextInFrame(received);
    if (!text)
        return;
    const auto length = static_cast<std::size_t>(static_cast<unsigned char>(received[0])) << 8 |
                        static_cast<unsigned char>(received[1]);
    Require(length == received.size(), "a frame begins with its own length");
    Require(received.back() == '\0', "a frame ends with a zero byte");
    Require(received.size() >= MinimumAnswerSize, "an answer has a text");
    Require(text->data() == received.data() + FrameLengthSize &&
                text->size() <= received.size() - FrameOverhead,
            "the text stands in the frame");
    Require(text->find('\0') == std::string_view::npos, "the text ends at its first zero byte");
}

void CheckSent(const std::string& text) {
    const std::optional<std::string> frame = BuildFrame(text);
    Require(frame.has_value() == (text.size() <= MaximumFrameText),
            "a frame is built up to the largest size");
    if (!frame || text.empty())
        return;
    Require(frame->size() == text.size() + FrameOverhead, "a frame is its text and three bytes");
    const std::optional<std::string_view> read = TextInFrame(*frame);
    Require(read.has_value() && *read == text.substr(0, text.find('\0')),
            "a frame that is built can be read");
    std::string other = *frame;
    other[1] = static_cast<char>(other[1] + 1);
    Require(!TextInFrame(other), "a length that is off by one makes it no frame");
    Require(!TextInFrame(std::string_view(*frame).substr(0, frame->size() - 1)),
            "a frame that is cut off is none");
}

std::vector<std::wstring_view> AllFields(std::wstring_view text) {
    return SplitFields(text, std::numeric_limits<std::size_t>::max());
}

} // namespace

void FuzzFrame(Bytes input) {
    const std::string bytes = TextOf(input);
    CheckReceived(bytes);
    CheckSent(bytes);
}

void FuzzResponse(Bytes input) {
    const std::wstring text = WideTextOf(input);
    const std::vector<std::wstring_view> fields = AllFields(text);
    std::size_t length = 0;
    for (const std::wstring_view field : fields) {
        Require(!field.empty() && field.find(L'|') == std::wstring_view::npos,
                "a field is not empty and has no bar");
        length += field.size();
    }
    Require(length == text.size() - static_cast<std::size_t>(std::ranges::count(text, L'|')),
            "only bars are no part of a field");
    const auto three = SplitFields(text, 3);
    Require(three.size() == std::min<std::size_t>(fields.size(), 3) &&
                std::equal(three.begin(), three.end(), fields.begin()),
            "the first fields are the same however many are asked for");

    const std::optional<std::wstring> failure = FailureInResponse(text);
    Require(failure.has_value() || fields.size() >= 2, "success needs two fields");
    Require(FailureInResponse(L"||" + text + L"|") == failure, "empty fields do not count");
    if (fields.size() > 2)
        Require(FailureInResponse(text + L"|more") == failure, "a fourth field does not count");

    const std::wstring upToZero = text.c_str();
    const std::wstring message = BuildActionMessage(L"MESSAGE", upToZero.c_str());
    Require(message == L"TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|MESSAGE|" + upToZero,
            "an argument travels as it is");
}

} // namespace zt::fuzz
