#include "publish/FolderTree.h"

#include "publish/ArchiveNames.h"
#include "components/Values.h"
#include "publish/FolderLink.h"
#include "publish/FolderSearch.h"

namespace zt {

namespace {

HRESULT AddFile(ArchiveComponent* archive, const std::wstring& path, const std::wstring& name) {
    return ArchiveComponent::AddFile::Call(archive, Borrow(MakeText(path)), Borrow(MakeText(name)),
                                           VARIANT_TRUE);
}

bool IsLeftOut(const FolderSearch& entry) {
    return entry.HasAttribute(FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM) ||
           IsDotEntry(entry.Name());
}

FolderLink LinkOfFolder(const std::wstring& folder) {
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW(folder.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return FolderLink::None;
    FindClose(search);
    return LinkOf(data.dwFileAttributes, data.dwReserved0);
}

void DeleteEntries(const std::wstring& folder) {
    for (FolderSearch entry(folder); entry.HasEntry(); entry.Next()) {
        const std::wstring path = folder + L"\\" + entry.Name();
        if (!entry.IsFolder())
            DeleteFileW(path.c_str());
        else if (!IsDotEntry(entry.Name()))
            DeleteFolderTree(path);
    }
}

} // namespace

HRESULT AddFolderToArchive(ArchiveComponent* archive, const std::wstring& folder,
                           const std::wstring* prefix) {
    HRESULT result = S_OK;
    FolderSearch entry(folder);
    for (; SUCCEEDED(result) && entry.HasEntry(); entry.Next()) {
        if (IsLeftOut(entry))
            continue;
        const std::wstring path = folder + L"\\" + entry.Name();
        const std::wstring name = ArchiveName(prefix, entry.Name());
        result = entry.IsFolder() ? AddFolderToArchive(archive, path, &name)
                                  : AddFile(archive, path, name);
    }
    if (SUCCEEDED(result) && entry.Error() != ERROR_NO_MORE_FILES)
        return ResultOfWin32Error(entry.Error());
    return result;
}

bool DeleteFolderTree(const std::wstring& folder) {
    const FolderLink link = LinkOfFolder(folder);
    if (link == FolderLink::Opaque)
        return false;
    if (link == FolderLink::None)
        DeleteEntries(folder);
    return RemoveDirectoryW(folder.c_str()) != FALSE;
}

} // namespace zt
