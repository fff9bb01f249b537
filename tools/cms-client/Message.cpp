#include "Message.h"

#include <algorithm>

namespace zt::cmsclient {
namespace {

constexpr std::string_view Head = "TOOL_ACTION_MESSAGE|ZELTOR_MANUAL|";

std::string QuotedFields(std::string_view text) {
    std::string quoted;
    while (true) {
        const std::size_t end = std::min(text.find('|'), text.size());
        quoted += '"';
        quoted += text.substr(0, end);
        quoted += '"';
        if (end == text.size())
            return quoted;
        quoted += ' ';
        text.remove_prefix(end + 1);
    }
}

} // namespace

std::string Describe(std::string_view message) {
    if (!message.starts_with(Head))
        return "unknown message: " + QuotedFields(message);
    return QuotedFields(message.substr(Head.size()));
}

Verdict VerdictOf(std::string_view message) {
    if (!message.starts_with(Head))
        return Verdict::None;
    message.remove_prefix(Head.size());
    if (message == "STATUS|SUCCESS")
        return Verdict::Success;
    return message == "STATUS|FAILED" ? Verdict::Failure : Verdict::None;
}

} // namespace zt::cmsclient
