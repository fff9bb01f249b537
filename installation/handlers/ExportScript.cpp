#include "installation/handlers/ExportScript.h"

#include "installation/runtime/Utf8.h"

#include <algorithm>
#include <set>

namespace devinst {

namespace {

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view Blanks = " \t\r";
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    return text.substr(0, text.find_last_not_of(Blanks) + 1);
}

std::string_view TakeLine(std::string_view& text) {
    const std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    return Trimmed(line);
}

// "key = value", each key once.
bool ParseLine(std::string_view line, std::set<std::string_view>& seen, ExportScript& script) {
    const std::size_t equals = line.find('=');
    if (equals == std::string_view::npos)
        return false;
    const std::string_view key = Trimmed(line.substr(0, equals));
    if ((key != "first" && key != "second") || !seen.insert(key).second)
        return false;
    const std::wstring value = FromUtf8(Trimmed(line.substr(equals + 1)));
    (key == "first" ? script.firstName : script.secondName) = value;
    return true;
}

} // namespace

std::optional<ExportScript> ParseExportScript(std::string_view text) {
    if (TakeLine(text) != "export-script 1")
        return std::nullopt;
    ExportScript script;
    std::set<std::string_view> seen;
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        if (line.empty() || line.starts_with('#'))
            continue;
        if (!ParseLine(line, seen, script))
            return std::nullopt;
    }
    return script;
}

} // namespace devinst
