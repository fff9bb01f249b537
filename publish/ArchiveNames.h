// Names and results of the walk that packs a folder. No Windows call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zt {

// "." and "..", which every folder lists.
bool IsDotEntry(std::wstring_view entryName);

// Name of an entry in the archive: relative to the folder that is packed, parts joined by a
// backslash. prefix is the archive name of the entry's own folder, null for the packed folder.
std::wstring ArchiveName(const std::wstring* prefix, const std::wstring& entryName);

// The result code (negative) that stands for a Windows error code.
std::int32_t ResultOfWin32Error(std::uint32_t error);

} // namespace zt
