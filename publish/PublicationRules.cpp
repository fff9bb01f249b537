#include "publish/PublicationRules.h"

namespace zt {

namespace {

constexpr std::int32_t CatalogKind = 0;
constexpr std::int32_t LearningKind = 2;
constexpr std::int32_t TextKind = 3;
constexpr std::int32_t IllustrationKind = 4;

} // namespace

PublishRoute RouteOfKind(std::int32_t kind) {
    switch (kind) {
    case CatalogKind:
    case IllustrationKind:
        return PublishRoute::Exporter;
    case TextKind:
        return PublishRoute::Text;
    default:
        return PublishRoute::Viewer;
    }
}

bool IsLearningKind(std::int32_t kind) {
    return kind == LearningKind;
}

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
