#include "publish/PublicationRules.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

TEST(PublicationPaths, StandBesideTheProjectsArchive) {
    EXPECT_EQ(PublishedFolder(L"d:\\ex", L"P"), L"d:\\ex\\P");
    EXPECT_EQ(PackagePath(L"d:\\ex", L"P"), L"d:\\ex\\P.kvb");
}

TEST(PublicationPaths, KeepDotsInTheProjectsName) {
    EXPECT_EQ(PublishedFolder(L"d:\\ex", L"P.rev2"), L"d:\\ex\\P.rev2");
    EXPECT_EQ(PackagePath(L"d:\\ex", L"P.rev2"), L"d:\\ex\\P.rev2.kvb");
}

TEST(SpecificationFile, LiesBesideTheFolder) {
    EXPECT_EQ(SpecificationFileName(L"c:\\data\\spec"), L"c:\\data\\spec.cfg");
}

TEST(SpecificationFile, IsTheBareExtensionWithoutAFolder) {
    EXPECT_EQ(SpecificationFileName(L""), L".cfg");
}

TEST(AxesFolder, HasNoMakersLevel) {
    EXPECT_EQ(AxesFolder(L"c:\\data", L"axes1.wrl"), L"c:\\data\\KVProductFamily\\Axes\\axes1.wrl");
}

TEST(AxesFolder, StartsAtTheRootWithoutADataFolder) {
    EXPECT_EQ(AxesFolder(L"", L"a.wrl"), L"\\KVProductFamily\\Axes\\a.wrl");
}

TEST(PublicationNames, FallBackFromTheSecondToTheFirstToTheProject) {
    const struct {
        PublicationNames given, completed;
    } rows[] = {
        {{L"One", L"Two"}, {L"One", L"Two"}},
        {{L"One", L""}, {L"One", L"One"}},
        {{L"", L"Two"}, {L"P", L"Two"}},
        {{L"", L""}, {L"P", L"P"}},
    };
    for (const auto& row : rows) {
        const PublicationNames names = CompleteNames(row.given, L"P");
        EXPECT_EQ(names.first, row.completed.first);
        EXPECT_EQ(names.second, row.completed.second);
    }
}

TEST(TextPublicationName, IsTheSecondNameOrTheProjects) {
    EXPECT_EQ(TextPublicationName(L"Two", L"P"), L"Two");
    EXPECT_EQ(TextPublicationName(L"", L"P"), L"P");
}

TEST(DotEntries, AreTheTwoThatEveryFolderLists) {
    EXPECT_TRUE(IsDotEntry(L"."));
    EXPECT_TRUE(IsDotEntry(L".."));
    for (const wchar_t* name : {L"", L"...", L".a", L"..a", L"a.", L"a"})
        EXPECT_FALSE(IsDotEntry(name)) << name;
}

TEST(ArchiveName, IsTheEntryAloneInThePackedFolder) {
    EXPECT_EQ(ArchiveName(nullptr, L"index.html"), L"index.html");
}

TEST(ArchiveName, JoinsItsPartsByBackslashes) {
    const std::wstring one = L"documents";
    const std::wstring two = ArchiveName(&one, L"de");
    EXPECT_EQ(two, L"documents\\de");
    EXPECT_EQ(ArchiveName(&two, L"a.xml"), L"documents\\de\\a.xml");
}

TEST(Win32Result, HasTheFamilyOfWindowsErrorsAndTheLowHalfOfTheError) {
    const struct {
        std::uint32_t error, result;
    } rows[] = {
        {2, 0x80070002U},      {3, 0x80070003U},       {5, 0x80070005U},
        {0xFFFF, 0x8007FFFFU}, {0x12345, 0x80072345U}, {0, 0x80070000U},
    };
    for (const auto& row : rows)
        EXPECT_EQ(static_cast<std::uint32_t>(ResultOfWin32Error(row.error)), row.result);
}

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
        {"link of an unknown type", ReparsePoint, 0, FolderLink::Opaque},
    };
    for (const auto& row : rows)
        EXPECT_EQ(LinkOf(row.attributes, row.tag), row.link) << row.what;
}

} // namespace
} // namespace zt
