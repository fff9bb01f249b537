#include "app/CommandLine.h"

#include "support/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace zt {

namespace {

using Values = std::span<const std::wstring_view>;

struct Keyword {
    std::wstring_view name;
    std::size_t values;
    void (*apply)(CommandLine& line, Values values);
};

template <std::wstring CommandLine::*Text>
void SetText(CommandLine& line, Values values) {
    line.*Text = values[0];
}

template <bool CommandLine::*... Flags>
void SetFlags(CommandLine& line, Values) {
    ((line.*Flags = true), ...);
}

void SetEditHandler(CommandLine& line, Values values) {
    line.editProgId = values[0];
    line.editMethod = values[1];
}

template <bool Overwrites>
void AddMetadata(CommandLine& line, Values values) {
    line.metadata.try_emplace(std::wstring(values[0]),
                              MetadataEntry{std::wstring(values[1]), Overwrites});
}

constexpr std::array Keywords = {
    Keyword{L"IN", 1, SetText<&CommandLine::projectFile>},
    Keyword{L"EXCHANGEPATH", 1, SetText<&CommandLine::exchangePath>},
    Keyword{L"LOG", 1, SetText<&CommandLine::logFile>},
    Keyword{L"M", 1, SetText<&CommandLine::statusId>},
    Keyword{L"S", 0, SetFlags<&CommandLine::notify>},
    Keyword{L"KVB", 0, SetFlags<&CommandLine::publish, &CommandLine::package>},
    Keyword{L"PUB", 0, SetFlags<&CommandLine::publish>},
    Keyword{L"EDIT", 2, SetEditHandler},
    Keyword{L"META", 2, AddMetadata<true>},
    Keyword{L"ADDMETA", 2, AddMetadata<false>},
    Keyword{L"PROJECTNAME", 1, SetText<&CommandLine::newProjectName>},
    Keyword{L"DM", 1, SetText<&CommandLine::document>},
    Keyword{L"UPDATEDOC", 0, SetFlags<&CommandLine::updateDocument>},
    Keyword{L"NR", 0, SetFlags<&CommandLine::newRevision>},
};

// The keywords hold Latin capitals only, so that no other case folding is needed.
const Keyword* FindKeyword(std::wstring_view argument) {
    argument.remove_prefix(std::min(argument.find_first_not_of(L" \t\n\v\f\r"), argument.size()));
    if (argument.empty() || (argument.front() != L'-' && argument.front() != L'/'))
        return nullptr;
    argument.remove_prefix(1);
    const auto found = std::ranges::find_if(Keywords, [argument](const Keyword& keyword) {
        return EqualIgnoringLatinCase(argument, keyword.name);
    });
    return found == Keywords.end() ? nullptr : &*found;
}

} // namespace

CommandLine ParseCommandLine(std::span<const std::wstring_view> arguments) {
    CommandLine line;
    while (!arguments.empty()) {
        const Keyword* keyword = FindKeyword(arguments.front());
        arguments = arguments.subspan(1);
        if (keyword == nullptr || keyword->values > arguments.size())
            continue;
        keyword->apply(line, arguments.first(keyword->values));
        arguments = arguments.subspan(keyword->values);
    }
    return line;
}

bool HasProjectWork(const CommandLine& line) {
    return line.publish || !line.metadata.empty() ||
           (!line.editProgId.empty() && !line.editMethod.empty()) || !line.document.empty() ||
           !line.newProjectName.empty();
}

ProjectLocation LocateProject(std::wstring_view projectFile) {
    ProjectLocation location;
    const std::size_t backslash = projectFile.rfind(L'\\');
    if (backslash != std::wstring_view::npos) {
        location.hasFolder = true;
        location.folder = projectFile.substr(0, backslash);
        projectFile.remove_prefix(backslash + 1);
    }
    location.name = projectFile.substr(0, projectFile.rfind(L'.'));
    return location;
}

std::wstring_view ArgumentsOf(std::wstring_view wholeCommandLine) {
    const bool quoted = wholeCommandLine.starts_with(L'"');
    const std::size_t end = quoted ? wholeCommandLine.find(L'"', 1) : wholeCommandLine.find(L' ');
    if (end == std::wstring_view::npos)
        return {};
    return wholeCommandLine.substr(quoted ? end + 1 : end);
}

} // namespace zt
