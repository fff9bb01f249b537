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

} // namespace
} // namespace zt
