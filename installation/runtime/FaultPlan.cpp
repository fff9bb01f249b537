#include "installation/runtime/Faults.h"

#include "installation/runtime/FaultOutputs.h"
#include "installation/runtime/ResultCodes.h"
#include "installation/runtime/Utf8.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace devinst {

namespace {

constexpr std::string_view Blanks = " \t\r";

std::string_view TakeWord(std::string_view& line) {
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
    const std::string_view word = line.substr(0, line.find_first_of(Blanks));
    line.remove_prefix(word.size());
    return word;
}

// The rest of the line, without the blanks and the double quotes around it.
std::string_view TakeRest(std::string_view line) {
    line.remove_prefix(std::min(line.find_first_not_of(Blanks), line.size()));
    line = line.substr(0, line.find_last_not_of(Blanks) + 1);
    if (line.size() >= 2 && line.front() == '"' && line.back() == '"')
        line = line.substr(1, line.size() - 2);
    return line;
}

std::optional<unsigned> ParseNumber(std::string_view text) {
    unsigned number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || text.empty())
        return std::nullopt;
    return number;
}

// "3", "3+" or "*".
bool ParseWhen(std::string_view when, FaultRule& rule) {
    if (when == "*") {
        rule.last = std::numeric_limits<unsigned>::max();
        return true;
    }
    const bool onwards = when.ends_with('+');
    const std::optional<unsigned> number = ParseNumber(when.substr(0, when.size() - onwards));
    if (!number || *number == 0)
        return false;
    rule.first = *number;
    rule.last = onwards ? std::numeric_limits<unsigned>::max() : *number;
    return true;
}

bool ParseCode(std::string_view& line, Fault& fault) {
    const std::optional<HRESULT> code = ParseResult(TakeWord(line));
    fault.code = code.value_or(E_FAIL);
    return code.has_value();
}

bool ParseSleep(std::string_view& line, Fault& fault) {
    const std::optional<unsigned> milliseconds = ParseNumber(TakeWord(line));
    fault.milliseconds = milliseconds.value_or(0);
    return milliseconds.has_value();
}

bool ParseText(std::string_view line, Fault& fault) {
    fault.text = FromUtf8(TakeRest(line));
    return true;
}

struct FaultWord {
    std::string_view word;
    FaultKind kind;
};

constexpr FaultWord FaultWords[] = {
    {"result", FaultKind::Result}, {"error", FaultKind::Error},     {"raise", FaultKind::Error},
    {"null", FaultKind::Null},     {"empty", FaultKind::Empty},     {"text", FaultKind::Text},
    {"then", FaultKind::Then},     {"variant", FaultKind::Variant}, {"sleep", FaultKind::Sleep},
    {"exit", FaultKind::Exit},     {"throw", FaultKind::Throw},     {"leak", FaultKind::Leak},
};

std::optional<FaultKind> ParseKind(std::string_view word) {
    for (const FaultWord& known : FaultWords) {
        if (known.word == word)
            return known.kind;
    }
    return std::nullopt;
}

bool ParseWhat(std::string_view line, Fault& fault) {
    const std::optional<FaultKind> kind = ParseKind(TakeWord(line));
    if (!kind)
        return false;
    fault.kind = *kind;
    switch (fault.kind) {
    case FaultKind::Null:
    case FaultKind::Empty:
    case FaultKind::Throw:
    case FaultKind::Leak:
        return TakeRest(line).empty();
    case FaultKind::Sleep:
        return ParseSleep(line, fault) && TakeRest(line).empty();
    case FaultKind::Result:
    case FaultKind::Then:
    case FaultKind::Exit:
        return ParseCode(line, fault) && TakeRest(line).empty();
    case FaultKind::Error:
        return ParseCode(line, fault) && ParseText(line, fault);
    case FaultKind::Variant:
        return ParseText(line, fault) && IsVariantForm(fault.text);
    default:
        return ParseText(line, fault);
    }
}

bool ParseRule(std::string_view line, FaultRule& rule) {
    const std::string_view target = TakeWord(line);
    const std::size_t dot = target.find('.');
    if (dot == std::string_view::npos || dot == 0 || dot + 1 == target.size())
        return false;
    rule.object = target.substr(0, dot);
    rule.operation = target.substr(dot + 1);
    return ParseWhen(TakeWord(line), rule) && ParseWhat(line, rule.fault);
}

} // namespace

std::optional<std::vector<FaultRule>> ParseFaultPlan(std::string_view text,
                                                     std::string* complaint) {
    std::vector<FaultRule> rules;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const std::size_t start = line.find_first_not_of(Blanks);
        if (start == std::string_view::npos || line[start] == '#')
            continue;
        FaultRule rule;
        if (!ParseRule(line, rule)) {
            *complaint = TakeRest(line);
            return std::nullopt;
        }
        rules.push_back(rule);
    }
    return rules;
}

} // namespace devinst
