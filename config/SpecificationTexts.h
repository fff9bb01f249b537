// Where the files of the installation's specifications lie, and the selection paths (XPath) into
// them. No Windows call.
#pragma once

#include <optional>
#include <string>

namespace zt {

struct SpecificationPaths {
    std::wstring folder;
    // Beside the folder, not in it.
    std::wstring descriptionFile;
};

SpecificationPaths PathsOfSpecification(const std::wstring& dataFolder, const std::wstring& name);

// The file in the subfolder of the language. None without a language, and for a name with "*" or
// "?", which no file can have.
std::optional<std::wstring> LanguageCandidate(const std::wstring& folder,
                                              const std::wstring& language,
                                              const std::wstring& fileName);

// The file in the specification's folder itself.
std::wstring PlainCandidate(const std::wstring& folder, const std::wstring& fileName);

// The axes catalogue, which all specifications share.
std::wstring AxesCataloguePath(const std::wstring& dataFolder);

// The configuration of that language, wherever it stands in a description file; and the model file
// of that axes id in the axes catalogue. None for a text that XPath cannot hold between the quotes
// of the path (the quote itself, control characters): it selects nothing, and a malformed path
// must not reach the selection, which some parsers do not survive.
std::optional<std::wstring> ConfigurationOfLanguage(const std::wstring& language);
std::optional<std::wstring> ModelFileOfAxes(const std::wstring& axesId);

} // namespace zt
