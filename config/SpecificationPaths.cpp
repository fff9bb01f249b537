#include "config/SpecificationPaths.h"

namespace zt {

SpecificationPaths PathsOfSpecification(const std::wstring& dataFolder, const std::wstring& name) {
    const std::wstring folder = dataFolder + L"\\Morvenit\\KVProductFamily\\IPCCFG\\" + name;
    return {folder, folder + L".cfg"};
}

std::optional<std::wstring> LanguageCandidate(const std::wstring& folder,
                                              const std::wstring& language,
                                              const std::wstring& fileName) {
    if (language.empty() || fileName.find_first_of(L"*?") != std::wstring::npos)
        return std::nullopt;
    return folder + L"\\" + language + L"\\" + fileName;
}

std::wstring PlainCandidate(const std::wstring& folder, const std::wstring& fileName) {
    return folder + L"\\" + fileName;
}

std::wstring AxesCataloguePath(const std::wstring& dataFolder) {
    return dataFolder + L"\\Morvenit\\KVProductFamily\\Axes\\axes.xml";
}

} // namespace zt
