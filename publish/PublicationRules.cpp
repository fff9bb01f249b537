#include "publish/PublicationRules.h"

namespace zt {

namespace {

constexpr std::uint32_t ReparsePoint = 0x00000400;
constexpr std::uint32_t StandsForAnother = 0x20000000; // in a reparse tag

} // namespace

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

bool IsDotEntry(std::wstring_view entryName) {
    return entryName == L"." || entryName == L"..";
}

std::wstring ArchiveName(const std::wstring* prefix, const std::wstring& entryName) {
    return prefix != nullptr ? *prefix + L"\\" + entryName : entryName;
}

FolderLink LinkOf(std::uint32_t attributes, std::uint32_t reparseTag) {
    if ((attributes & ReparsePoint) == 0)
        return FolderLink::None;
    // Some file systems report a reparse point but not of which type.
    if (reparseTag == 0)
        return FolderLink::Opaque;
    // Reparse points of other types (a folder kept in a cloud, say) are the thing itself.
    return (reparseTag & StandsForAnother) != 0 ? FolderLink::Removable : FolderLink::None;
}

std::int32_t ResultOfWin32Error(std::uint32_t error) {
    return static_cast<std::int32_t>(0x80070000U | (error & 0xFFFFU));
}

} // namespace zt
