#include "publish/PublicationRules.h"

namespace zt {

std::wstring PublishedFolder(const std::wstring& exchangePath, const std::wstring& projectName) {
    return exchangePath + L"\\" + projectName;
}

std::wstring PackagePath(const std::wstring& exchangePath, const std::wstring& projectName) {
    return exchangePath + L"\\" + projectName + L".kvb";
}

std::wstring SpecificationFileName(const std::wstring& folder) {
    return folder + L".cfg";
}

std::wstring AxesFolder(const std::wstring& dataFolder, const std::wstring& axesModelPath) {
    // The catalogue of the models lies one level deeper, below the maker's folder; the component
    // expects the models themselves here.
    return dataFolder + L"\\KVProductFamily\\Axes\\" + axesModelPath;
}

PublicationNames CompleteNames(PublicationNames names, const std::wstring& projectName) {
    if (names.first.empty())
        names.first = projectName;
    if (names.second.empty())
        names.second = names.first;
    return names;
}

std::wstring TextPublicationName(const std::wstring& secondName, const std::wstring& projectName) {
    return secondName.empty() ? projectName : secondName;
}

} // namespace zt
