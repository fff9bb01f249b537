#include "publish/ArchiveNames.h"

namespace zt {

bool IsDotEntry(std::wstring_view entryName) {
    return entryName == L"." || entryName == L"..";
}

std::wstring ArchiveName(const std::wstring* prefix, const std::wstring& entryName) {
    return prefix != nullptr ? *prefix + L"\\" + entryName : entryName;
}

std::int32_t ResultOfWin32Error(std::uint32_t error) {
    return static_cast<std::int32_t>(0x80070000U | (error & 0xFFFFU));
}

} // namespace zt
