#pragma once

#include <windows.h>

#include <memory>
#include <string>

namespace zt {

// The entries of one folder, "." and ".." included, in the order in which the file system gives
// them.
class FolderSearch {
  public:
    explicit FolderSearch(const std::wstring& folder);
    ~FolderSearch();
    FolderSearch(const FolderSearch&) = delete;
    FolderSearch& operator=(const FolderSearch&) = delete;

    // Whether there is a current entry.
    bool HasEntry() const { return m_hasEntry; }
    // Without a current entry: the error that ended the search; ERROR_NO_MORE_FILES at its end.
    DWORD Error() const { return m_error; }
    void Next();

    // Of the current entry.
    const wchar_t* Name() const { return m_data->cFileName; }
    bool IsFolder() const { return HasAttribute(FILE_ATTRIBUTE_DIRECTORY); }
    bool HasAttribute(DWORD attribute) const { return (m_data->dwFileAttributes & attribute) != 0; }

  private:
    void Settle(bool found);

    // On the heap, so that a walk's depth costs little stack.
    std::unique_ptr<WIN32_FIND_DATAW> m_data = std::make_unique<WIN32_FIND_DATAW>();
    HANDLE m_search;
    bool m_hasEntry = false;
    DWORD m_error = ERROR_SUCCESS;
};

} // namespace zt
