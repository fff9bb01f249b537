// Where the files of the installation's specifications lie.
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

} // namespace zt
