#include "support/Files.h"

#include "tests/support/Files.h"
#include "tests/support/Isolation.h"

namespace zt {
namespace {

TEST(EnsuredFolder, IsThereWhenItWasThere) {
    const test::TemporaryFolder folder;
    EXPECT_TRUE(EnsureFolder(folder.Path(), false));
    EXPECT_TRUE(EnsureFolder(folder.Path() + L"\\", false));
}

TEST(EnsuredFolder, IsMadeWithEveryMissingLevel) {
    const test::TemporaryFolder folder;
    EXPECT_TRUE(EnsureFolder(folder.Path(L"new\\a\\b"), false));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path(L"new\\a\\b")));
    EXPECT_TRUE(EnsureFolder(folder.Path(L"other\\a\\"), false));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path(L"other\\a")));
}

TEST(EnsuredFolder, IsTheFolderOfTheFileOnly) {
    const test::TemporaryFolder folder;
    EXPECT_TRUE(EnsureFolder(folder.Path(L"new\\a\\run.log"), true));
    EXPECT_TRUE(std::filesystem::is_directory(folder.Path(L"new\\a")));
    EXPECT_FALSE(test::Exists(folder.Path(L"new\\a\\run.log")));
}

TEST(EnsuredFolder, MayBeAFileOfThatName) {
    const test::TemporaryFolder folder;
    test::WriteBytes(folder.Path(L"file"), "text");
    EXPECT_TRUE(EnsureFolder(folder.Path(L"file"), false));
    EXPECT_TRUE(EnsureFolder(folder.Path(L"file\\"), false));
    EXPECT_EQ(test::BytesOf(folder.Path(L"file")), "text");
}

TEST(EnsuredFolder, IsMissingForNoPath) {
    EXPECT_FALSE(EnsureFolder(L"", false));
    EXPECT_FALSE(EnsureFolder(L"\\", true));
}

TEST(EnsuredFolder, IsMissingForABareFileName) {
    EXPECT_FALSE(EnsureFolder(L"run.log", true));
}

TEST(EnsuredFolder, IsNotMadeForARelativePath) {
    const std::wstring name = test::UniqueName();
    EXPECT_FALSE(EnsureFolder(name, false));
    EXPECT_FALSE(EnsureFolder(name + L"\\run.log", true));
    EXPECT_FALSE(test::Exists(name));
}

TEST(EnsuredFolder, IsMissingBelowAFile) {
    const test::TemporaryFolder folder;
    test::WriteBytes(folder.Path(L"file"), "text");
    EXPECT_FALSE(EnsureFolder(folder.Path(L"file\\below"), false));
}

TEST(EnsuredFolder, IsMissingForANameThatCannotBe) {
    const test::TemporaryFolder folder;
    EXPECT_FALSE(EnsureFolder(folder.Path(L"a|b?"), false));
}

TEST(EnsuredFolder, IsReportedAsItIsForAPathOf300Characters) {
    const test::TemporaryFolder folder;
    const std::wstring path =
        folder.Path(std::wstring(150, L'a') + L"\\" + std::wstring(150, L'b'));
    const bool reported = EnsureFolder(path, false);
    EXPECT_EQ(reported, GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES);
}

} // namespace
} // namespace zt
