#include "publish/FolderSearch.h"

namespace zt {

FolderSearch::FolderSearch(const std::wstring& folder)
    : m_search(FindFirstFileW((folder + L"\\*.*").c_str(), m_data.get())) {
    Settle(m_search != INVALID_HANDLE_VALUE);
}

FolderSearch::~FolderSearch() {
    if (m_search != INVALID_HANDLE_VALUE)
        FindClose(m_search);
}

void FolderSearch::Next() {
    Settle(FindNextFileW(m_search, m_data.get()) != FALSE);
}

void FolderSearch::Settle(bool found) {
    m_error = found ? ERROR_SUCCESS : GetLastError();
    m_hasEntry = found;
}

} // namespace zt
