#include "publish/FolderTree.h"

#include "publish/ArchiveNames.h"
#include "components/Texts.h"
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

enum class Link { None, Removable, Opaque };

// Whether the folder is a symbolic link or a junction. Other reparse points (a folder kept in a
// cloud, say) are the thing itself. Where the file system tells of a reparse point but not of which
// kind, removing it might remove what it stands for.
Link LinkOf(const std::wstring& folder) {
    WIN32_FIND_DATAW data = {};
    const HANDLE search = FindFirstFileW(folder.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return Link::None;
    FindClose(search);
    if ((data.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
        return Link::None;
    const DWORD tag = data.dwReserved0;
    if (tag == 0)
        return Link::Opaque;
    return IsReparseTagNameSurrogate(tag) ? Link::Removable : Link::None;
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
    const Link link = LinkOf(folder);
    if (link == Link::Opaque)
        return false;
    if (link == Link::None)
        DeleteEntries(folder);
    return RemoveDirectoryW(folder.c_str()) != FALSE;
}

} // namespace zt
