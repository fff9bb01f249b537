// The two walks over a published folder.
#pragma once

#include "components/contracts/Publishing.h"

#include <windows.h>

#include <string>

namespace zt {

// Adds every file below the folder (a path without a trailing backslash) to the archive, under its
// path relative to the folder behind prefix (null: none). What is hidden or a system file or folder
// is excluded. Returns the result of the last addition, a success code for an empty folder, or the
// first failure, which ends the walk: an addition's, or that of a folder that cannot be listed.
HRESULT AddFolderToArchive(ArchiveComponent* archive, const std::wstring& folder,
                           const std::wstring* prefix = nullptr);

// Deletes the folder with all it holds, as far as it can be deleted. A link (the folder itself or
// one in it) is removed and never followed, so that what it stands for stays; a link of an unknown
// type, whose removal might remove that, stays itself. Returns whether the folder itself is gone.
bool DeleteFolderTree(const std::wstring& folder);

} // namespace zt
