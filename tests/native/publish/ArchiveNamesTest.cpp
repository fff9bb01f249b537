#include "publish/ArchiveNames.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

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

} // namespace
} // namespace zt
