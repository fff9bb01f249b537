#include "publish/FolderTree.h"

#include "components/Values.h"
#include "publish/PublicationRules.h"

#include <memory>

namespace zt {

namespace {

// The entries of one folder, "." and ".." included, in the order in which the file system gives
// them.
class FolderSearch {
  public:
    explicit FolderSearch(const std::wstring& folder)
        : m_search(FindFirstFileW((folder + L"\\*.*").c_str(), m_data.get())) {
        Update(m_search != INVALID_HANDLE_VALUE);
    }
    ~FolderSearch() {
        if (m_search != INVALID_HANDLE_VALUE)
            FindClose(m_search);
    }
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    // Whether there is a current entry.
    bool HasEntry() const { return m_hasEntry; }
    // Without a current entry: the error that ended the search; ERROR_NO_MORE_FILES at its end.
    DWORD Error() const { return m_error; }
    void Next() { Update(FindNextFileW(m_search, m_data.get()) != FALSE); }

    // Of the current entry.
    const wchar_t* Name() const { return m_data->cFileName; }
    bool IsFolder() const { return HasAttribute(FILE_ATTRIBUTE_DIRECTORY); }
    bool HasAttribute(DWORD attribute) const { return (m_data->dwFileAttributes & attribute) != 0; }

  private:
    void Update(bool found) {
        m_error = found ? ERROR_SUCCESS : GetLastError();
        m_hasEntry = found;
    }

    // On the heap, so that a walk's depth costs little stack.
    std::unique_ptr<WIN32_FIND_DATAW> m_data = std::make_unique<WIN32_FIND_DATAW>();
    HANDLE m_search;
    bool m_hasEntry = false;
    DWORD m_error = ERROR_SUCCESS;
};

HRESULT AddFile(ArchiveComponent* archive, const std::wstring& path, const std::wstring& name) {
    return ArchiveComponent::AddFile::Call(archive, Borrow(MakeText(path)), Borrow(MakeText(name)),
                                           VARIANT_TRUE);
}

bool IsExcluded(const FolderSearch& entry) {
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
        if (IsExcluded(entry))
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
