#include "app/CommandLine.h"

#include "tests/fuzz/Targets.h"

#include <algorithm>

namespace zt::fuzz {

namespace {

using Views = std::vector<std::wstring_view>;

bool IsOneOf(const std::wstring& text, const Views& arguments) {
    return std::ranges::find(arguments, std::wstring_view(text)) != arguments.end();
}

bool IsEmptyOrOneOf(const std::wstring& text, const Views& arguments) {
    return text.empty() || IsOneOf(text, arguments);
}

bool Equal(const CommandLine& left, const CommandLine& right) {
    const auto entriesEqual = [](const auto& a, const auto& b) {
        return a.first == b.first && a.second.value == b.second.value &&
               a.second.bSet == b.second.bSet;
    };
    return left.projectFile == right.projectFile && left.exchangePath == right.exchangePath &&
           left.logFile == right.logFile && left.statusId == right.statusId &&
           left.editProgId == right.editProgId && left.editMethod == right.editMethod &&
           left.newProjectName == right.newProjectName && left.document == right.document &&
           left.notify == right.notify && left.package == right.package &&
           left.publish == right.publish && left.updateDocument == right.updateDocument &&
           left.newRevision == right.newRevision &&
           std::ranges::equal(left.metadata, right.metadata, entriesEqual);
}

void CheckTextsStandAsTheyWere(const CommandLine& line, const Views& arguments) {
    for (const std::wstring* text :
         {&line.projectFile, &line.exchangePath, &line.logFile, &line.statusId, &line.editProgId,
          &line.editMethod, &line.newProjectName, &line.document})
        Require(IsEmptyOrOneOf(*text, arguments), "a text is an argument as it stood");
    for (const auto& [name, entry] : line.metadata)
        Require(IsOneOf(name, arguments) && IsOneOf(entry.value, arguments),
                "names and values of metadata are arguments as they stood");
}

void CheckSkipping(const CommandLine& line, Views arguments) {
    arguments.insert(arguments.begin(), L"no keyword");
    Require(Equal(line, ParseCommandLine(arguments)), "an argument that is no keyword is skipped");
    arguments[0] = L"-NOKEYWORD";
    Require(Equal(line, ParseCommandLine(arguments)), "an unknown keyword is skipped");
}

void CheckTheLastHolds(const CommandLine& line, Views arguments) {
    const bool mayBeSetEmpty = IsOneOf(std::wstring(), arguments);
    arguments.insert(arguments.begin(), {L"/in", L"first"});
    const std::wstring file = ParseCommandLine(arguments).projectFile;
    if (!line.projectFile.empty())
        Require(file == line.projectFile, "a later value takes the place of an earlier one");
    else if (!mayBeSetEmpty)
        Require(file == L"first", "a keyword at the begin is taken");
}

} // namespace

void FuzzCommandLine(Bytes input) {
    const std::vector<std::wstring> texts = WideLines(input, 0);
    const Views arguments(texts.begin(), texts.end());
    const CommandLine line = ParseCommandLine(arguments);
    CheckTextsStandAsTheyWere(line, arguments);
    CheckSkipping(line, arguments);
    CheckTheLastHolds(line, arguments);
    Require(!line.package || line.publish, "a package is published");
    Require(!(line.publish || !line.metadata.empty() || !line.document.empty()) ||
                HasProjectWork(line),
            "publishing, metadata and a document are work on the project");
}

void FuzzMetadata(Bytes input) {
    const std::vector<std::wstring> texts = WideLines(input, 0);
    Views arguments;
    MetadataMap expected;
    for (std::size_t i = 0; i + 1 < texts.size(); i += 2) {
        const bool adds = texts[i].starts_with(L'+');
        const std::wstring name = texts[i].substr(adds ? 1 : 0);
        arguments.push_back(adds ? L"-ADDMETA" : L"-META");
        arguments.insert(arguments.end(), {std::wstring_view(texts[i]).substr(adds ? 1 : 0),
                                           std::wstring_view(texts[i + 1])});
        if (!expected.contains(name))
            expected[name] = {texts[i + 1], !adds};
    }
    const MetadataMap taken = ParseCommandLine(arguments).metadata;
    Require(taken.size() == expected.size(), "each name stands once");
    const std::wstring* before = nullptr;
    for (const auto& [name, entry] : taken) {
        Require(expected.contains(name) && expected[name].value == entry.value &&
                    expected[name].bSet == entry.bSet,
                "the first pair of a name stays");
        Require(before == nullptr || std::ranges::lexicographical_compare(*before, name),
                "names ascend by the codes of their characters");
        before = &name;
    }
}

void FuzzEcho(Bytes input) {
    const std::wstring whole = WideTextOf(input);
    const std::wstring_view echo = ArgumentsOf(whole);
    Require(echo.size() < whole.size() || whole.empty() || whole.front() == L' ',
            "the program's path is left out");
    Require(std::wstring_view(whole).ends_with(echo), "the echo is the end of the command line");
    if (!echo.empty() && !whole.starts_with(L'"'))
        Require(echo.front() == L' ' && echo.size() == whole.size() - whole.find(L' '),
                "the echo begins with the blank behind the program's path");
    if (!echo.empty() && whole.starts_with(L'"'))
        Require(whole.find(L'"', 1) + 1 == whole.size() - echo.size(),
                "the echo begins behind the closing quote");
}

} // namespace zt::fuzz
