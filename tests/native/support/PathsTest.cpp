#include "support/Paths.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

TEST(TrailingBackslash, IsCutOnce) {
    EXPECT_EQ(WithoutTrailingBackslash(L"d:\\ex\\"), L"d:\\ex");
    EXPECT_EQ(WithoutTrailingBackslash(L"d:\\ex\\\\"), L"d:\\ex\\");
    EXPECT_EQ(WithoutTrailingBackslash(L"\\"), L"");
}

TEST(TrailingBackslash, IsNotMissedWhereThereIsNone) {
    EXPECT_EQ(WithoutTrailingBackslash(L"d:\\ex"), L"d:\\ex");
    EXPECT_EQ(WithoutTrailingBackslash(L"d:\\ex/"), L"d:\\ex/");
    EXPECT_EQ(WithoutTrailingBackslash(L""), L"");
}

TEST(FolderOfAFile, EndsWithTheLastBackslash) {
    EXPECT_EQ(FolderOfFile(L"d:\\new\\a.b\\run.log"), L"d:\\new\\a.b\\");
    EXPECT_EQ(FolderOfFile(L"d:\\new\\"), L"d:\\new\\");
    EXPECT_EQ(FolderOfFile(L"\\run.log"), L"\\");
}

TEST(FolderOfAFile, IsEmptyForABareName) {
    EXPECT_EQ(FolderOfFile(L"run.log"), L"");
    EXPECT_EQ(FolderOfFile(L"d:/run.log"), L"");
    EXPECT_EQ(FolderOfFile(L""), L"");
}

} // namespace
} // namespace zt
