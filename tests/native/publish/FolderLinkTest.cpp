#include "publish/FolderLink.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

constexpr std::uint32_t Folder = 0x00000010;
constexpr std::uint32_t ReparsePoint = 0x00000410;

TEST(FolderLink, FollowsAttributesAndReparseTag) {
    const struct {
        const char* what;
        std::uint32_t attributes;
        std::uint32_t tag;
        FolderLink link;
    } rows[] = {
        {"plain folder", Folder, 0, FolderLink::None},
        {"plain folder with what was left in the field", Folder, 0xA000000C, FolderLink::None},
        {"hidden folder", Folder | 0x2, 0, FolderLink::None},
        {"symbolic link", ReparsePoint, 0xA000000C, FolderLink::Removable},
        {"junction", ReparsePoint, 0xA0000003, FolderLink::Removable},
        {"hidden junction", ReparsePoint | 0x2, 0xA0000003, FolderLink::Removable},
        {"link of a subsystem", ReparsePoint, 0xA000001D, FolderLink::Removable},
        {"folder in a cloud", ReparsePoint, 0x9000601A, FolderLink::None},
        {"folder without duplicates", ReparsePoint, 0x80000013, FolderLink::None},
        {"link of an untold kind", ReparsePoint, 0, FolderLink::Opaque},
    };
    for (const auto& row : rows)
        EXPECT_EQ(LinkOf(row.attributes, row.tag), row.link) << row.what;
}

} // namespace
} // namespace zt
