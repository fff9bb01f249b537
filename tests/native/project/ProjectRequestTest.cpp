#include "project/ProjectRequest.h"

#include <gtest/gtest.h>

#include <ostream>

namespace zt::test {
namespace {

struct Case {
    const char* name;
    const wchar_t* documentPath;
    const wchar_t* folder;
    const wchar_t* fullPath;

    friend void PrintTo(const Case& one, std::ostream* out) { *out << one.name; }
};

class DocumentLocation : public testing::TestWithParam<Case> {};

TEST_P(DocumentLocation, IsThePathsOwnFolderOrTheExchangeFolder) {
    const zt::DocumentLocation location = LocateDocument(GetParam().documentPath, L"D:\\ex");
    EXPECT_EQ(location.folder, GetParam().folder);
    EXPECT_EQ(location.fullPath, GetParam().fullPath);
}

INSTANTIATE_TEST_SUITE_P(
    , DocumentLocation,
    testing::Values(Case{"FullPath", L"C:\\a\\b.xml", L"C:\\a", L"C:\\a\\b.xml"},
                    Case{"BareName", L"b.xml", L"D:\\ex", L"D:\\ex\\b.xml"},
                    Case{"RelativePath", L"a\\b.xml", L"a", L"a\\b.xml"},
                    Case{"RootOfADrive", L"C:\\b.xml", L"C:", L"C:\\b.xml"},
                    Case{"RootOnly", L"\\b.xml", L"", L"\\b.xml"},
                    Case{"TrailingBackslash", L"C:\\a\\", L"C:\\a", L"C:\\a\\"},
                    Case{"DriveWithoutAFolder", L"C:b.xml", L"D:\\ex", L"D:\\ex\\C:b.xml"},
                    Case{"ForwardSlashes", L"C:/a/b.xml", L"D:\\ex", L"D:\\ex\\C:/a/b.xml"},
                    Case{"ServerShare", L"\\\\srv\\s\\b.xml", L"\\\\srv\\s", L"\\\\srv\\s\\b.xml"}),
    [](const auto& one) { return one.param.name; });

TEST(ArchiveFile, IsNamedAfterTheProject) {
    EXPECT_EQ(ArchiveFileName(L"P.rev2"), L"P.rev2.kvp");
}

} // namespace
} // namespace zt::test
