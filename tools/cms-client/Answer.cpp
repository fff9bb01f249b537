#include "Answer.h"

#include "cms/Protocol.h"

#include <charconv>
#include <stdexcept>

namespace zt::cmsclient {
namespace {

constexpr std::string_view Blanks = " \t\r";
constexpr int LongestWait = 86400; // a day, in whatever unit

std::string_view Trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(Blanks);
    if (begin == std::string_view::npos)
        return {};
    return text.substr(begin, text.find_last_not_of(Blanks) - begin + 1);
}

// Takes the first word off text.
std::string_view TakeWord(std::string_view& text) {
    const std::string_view word = text.substr(0, text.find_first_of(Blanks));
    text = Trimmed(text.substr(word.size()));
    return word;
}

std::string Framed(std::string_view text) {
    const auto frame = BuildFrame(text);
    if (!frame)
        throw std::runtime_error("the answer is too long for a frame");
    return *frame;
}

int ParseNumber(std::string_view text, int base, int largest) {
    int number = -1;
    const char* end = text.data() + text.size();
    const auto [last, error] = std::from_chars(text.data(), end, number, base);
    if (error != std::errc{} || last != end || number < 0 || number > largest)
        throw std::runtime_error("no number up to " + std::to_string(largest) + ": \"" +
                                 std::string(text) + "\"");
    return number;
}

std::string ParseBytes(std::string_view text) {
    std::string bytes;
    while (!text.empty())
        bytes += static_cast<char>(ParseNumber(TakeWord(text), 16, 0xFF));
    return bytes;
}

std::string Ok() {
    return Framed("TOOL_RESPONSE_MESSAGE|OK");
}

std::string ErrorText(std::string_view description) {
    std::string text = "TOOL_RESPONSE_MESSAGE|ERROR";
    if (!description.empty())
        text.append("|").append(description);
    return text;
}

void RefuseRest(std::string_view kind, std::string_view rest) {
    if (!rest.empty())
        throw std::runtime_error("\"" + std::string(kind) + "\" takes nothing behind it");
}

// False when kind is none of those that stand alone.
bool SetPlain(Answer& answer, std::string_view kind) {
    if (kind == "ok")
        answer.bytes = Ok();
    else if (kind == "garbage")
        answer.bytes = "\xDE\xAD no frame \xBE\xEF";
    else if (kind == "close")
        answer.end = Answer::End::AtOnce;
    else if (kind == "reset")
        answer.end = Answer::End::Reset;
    else
        return kind == "nothing";
    return true;
}

// False when kind is none of those that take something behind them.
bool SetDetailed(Answer& answer, std::string_view kind, std::string_view rest) {
    if (kind == "error") {
        answer.bytes = Framed(ErrorText(rest));
    } else if (kind == "text") {
        answer.bytes = Framed(rest);
    } else if (kind == "raw") {
        answer.bytes = ParseBytes(rest);
    } else if (kind == "late") {
        answer.delay = std::chrono::seconds(ParseNumber(rest, 10, LongestWait));
        answer.bytes = Ok();
    } else if (kind == "pieces") {
        answer.gap = std::chrono::milliseconds(ParseNumber(rest, 10, LongestWait));
        answer.bytes = Ok();
    } else {
        return false;
    }
    return true;
}

} // namespace

Answer ParseAnswer(std::string_view description) {
    std::string_view rest = Trimmed(description);
    Answer answer;
    answer.name = rest;
    const std::string_view kind = TakeWord(rest);
    if (SetPlain(answer, kind))
        RefuseRest(kind, rest);
    else if (!SetDetailed(answer, kind, rest))
        throw std::runtime_error("no such answer: \"" + std::string(kind) + "\"");
    return answer;
}

std::vector<Answer> ParseScript(std::string_view script) {
    std::vector<Answer> answers;
    for (int number = 1; !script.empty(); ++number) {
        const std::size_t end = std::min(script.find('\n'), script.size());
        const std::string_view line = Trimmed(script.substr(0, end));
        script.remove_prefix(std::min(end + 1, script.size()));
        if (line.empty() || line.front() == '#')
            continue;
        try {
            answers.push_back(ParseAnswer(line));
        } catch (const std::runtime_error& error) {
            throw std::runtime_error("line " + std::to_string(number) + ": " + error.what());
        }
    }
    if (answers.empty())
        throw std::runtime_error("the script holds no answer");
    return answers;
}

} // namespace zt::cmsclient
