#include "app/CommandLine.h"
#include "support/Paths.h"
#include "config/SpecificationTexts.h"
#include "project/ProjectRequest.h"
#include "publish/PublicationRules.h"
#include "publish/Setting.h"

#include "tests/fuzz/Targets.h"

namespace zt::fuzz {

namespace {

bool Has(std::wstring_view text, wchar_t character) {
    return text.find(character) != std::wstring_view::npos;
}

void CheckProject(const std::wstring& file) {
    const ProjectLocation location = LocateProject(file);
    Require(location.hasFolder == Has(file, L'\\'), "a backslash makes a folder");
    Require(!Has(location.name, L'\\'), "a project's name has no backslash");
    const std::wstring begin =
        location.hasFolder ? location.folder + L"\\" + location.name : location.name;
    Require(file.starts_with(begin), "folder and name stand at the path's begin");
    const std::wstring rest = file.substr(begin.size());
    Require(rest.empty() ? !Has(location.name, L'.') : rest.rfind(L'.') == 0,
            "what is cut is the last extension");
}

void CheckTexts(const std::wstring& path) {
    const std::wstring without = WithoutTrailingBackslash(path);
    Require(path == without || path == without + L"\\", "one backslash at most is removed");
    Require(path != without || !path.ends_with(L'\\'), "a backslash at the end is removed");
    const std::wstring folder = FolderOfFile(path);
    Require(path.starts_with(folder) && (folder.empty() || folder.ends_with(L'\\')) &&
                !Has(path.substr(folder.size()), L'\\'),
            "a file's folder ends at the last backslash");
}

void CheckDocument(const std::wstring& document, const std::wstring& exchange) {
    const DocumentLocation location = LocateDocument(document, exchange);
    Require(location.fullPath.starts_with(location.folder + L"\\"),
            "a document lies in its folder");
    Require(location.fullPath.ends_with(document), "a document keeps its name");
    Require(Has(document, L'\\') || location.folder == exchange,
            "a bare name lies in the exchange folder");
}

void CheckSpecification(const std::wstring& data, const std::wstring& language,
                        const std::wstring& name) {
    const SpecificationPaths paths = PathsOfSpecification(data, name);
    Require(paths.folder.starts_with(data) && paths.folder.ends_with(L"\\" + name),
            "a specification lies below the data folder");
    Require(SpecificationFileName(paths.folder) == paths.descriptionFile,
            "what publishes finds the same description file");
    const auto candidate = LanguageCandidate(paths.folder, language, name);
    Require(candidate.has_value() == (!language.empty() && !Has(name, L'*') && !Has(name, L'?')),
            "a language has a candidate for a name that a file can have");
    if (candidate)
        Require(*candidate == PlainCandidate(PlainCandidate(paths.folder, language), name),
                "a language is a subfolder");
}

void CheckPublication(const std::wstring& first, const std::wstring& second,
                      const std::wstring& project) {
    const PublicationNames names = CompleteNames({first, second}, project);
    Require(names.first == (first.empty() ? project : first),
            "the first name may be the project's");
    Require(names.second == (second.empty() ? names.first : second),
            "the second name may be the first");
    Require(PackagePath(first, project) == PublishedFolder(first, project) + L".kvb",
            "a package has the folder's name");
    Require(ArchiveName(&first, second) == PublishedFolder(first, second) &&
                ArchiveName(nullptr, second) == second,
            "an entry's name is relative to the packed folder");
}

} // namespace

void FuzzPaths(Bytes input) {
    const std::vector<std::wstring> lines = WideLines(input, 3);
    CheckProject(lines[0]);
    CheckTexts(lines[0]);
    CheckDocument(lines[0], lines[1]);
    CheckSpecification(lines[0], lines[1], lines[2]);
    CheckPublication(lines[0], lines[1], lines[2]);
}

void FuzzStoredSetting(Bytes input) {
    const std::vector<std::uint8_t> bytes(input.begin(), input.end());
    const std::wstring text = TextOfStoredBytes(bytes);
    Require(text.size() <= bytes.size() / 2 && !Has(text, L'\0'),
            "a text ends at its first zero or last whole character");
    for (std::size_t i = 0; i < text.size(); ++i)
        Require(text[i] == static_cast<wchar_t>(bytes[2 * i] | bytes[2 * i + 1] << 8),
                "a text's characters are low byte first");
    const std::uint32_t number = NumberOfStoredBytes(bytes);
    for (std::size_t i = 0; i < 4; ++i)
        Require((number >> (8 * i) & 0xFF) == (i < bytes.size() ? bytes[i] : 0),
                "a number's bytes are low byte first, missing ones zero");

    for (const Setting& value : {Setting(number), Setting(text)}) {
        Require(!DiffersFromDefault(value, value), "a value does not differ from itself");
        Require(DiffersFromDefault(value, std::nullopt) == (value != Setting(std::wstring())),
                "without a default only the empty text need not be stored");
    }
    Require(DiffersFromDefault(Setting(number), Setting(text)), "a number is no text");
}

} // namespace zt::fuzz
