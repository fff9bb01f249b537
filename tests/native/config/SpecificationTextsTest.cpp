#include "config/Axes.h"
#include "config/SpecificationTexts.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

TEST(AxesPosition, TakesXIntoTheLowHalf) {
    EXPECT_EQ(DefaultAxesPosition, 0x000F0055U);
    // The bits of the old x go first.
    EXPECT_EQ(WithAxesX(0x000F0055, 10), 0x000F000AU);
    EXPECT_EQ(WithAxesX(0x000F0055, 0), 0x000F0000U);
    EXPECT_EQ(WithAxesX(0x000F0055, 65535), 0x000FFFFFU);
}

TEST(AxesPosition, LetsAnXThatDoesNotFitSpillIntoY) {
    EXPECT_EQ(WithAxesX(0x000F0055, 65536), 0x000F0000U); // its only bit is set in y already
    EXPECT_EQ(WithAxesX(0x000F0055, 0x00120034), 0x001F0034U);
    EXPECT_EQ(WithAxesX(0x000F0055, -1), 0xFFFFFFFFU);
    EXPECT_EQ(WithAxesX(0x000F0055, -65536), 0xFFFF0000U);
    EXPECT_EQ(WithAxesX(0x000F0055, 2147483647), 0x7FFFFFFFU);
    EXPECT_EQ(WithAxesX(0x000F0055, -2147483647 - 1), 0x800F0000U);
}

TEST(AxesPosition, TakesTheLowHalfOfYIntoTheHighHalf) {
    EXPECT_EQ(WithAxesY(0x000F0055, 20), 0x00140055U);
    EXPECT_EQ(WithAxesY(0x000F0055, 0), 0x00000055U);
    EXPECT_EQ(WithAxesY(0x000F0055, 65535), 0xFFFF0055U);
    EXPECT_EQ(WithAxesY(0x000F0055, 65537), 0x00010055U);
    EXPECT_EQ(WithAxesY(0x000F0055, -1), 0xFFFF0055U);
    EXPECT_EQ(WithAxesY(0x000F0055, -2147483647 - 1), 0x00000055U);
    EXPECT_EQ(WithAxesY(0xFFFFFFFF, 3), 0x0003FFFFU);
}

TEST(SpecificationPaths, LieBelowTheDataFolder) {
    const SpecificationPaths paths = PathsOfSpecification(L"C:\\Data", L"S1000");
    EXPECT_EQ(paths.folder, L"C:\\Data\\Morvenit\\KVProductFamily\\IPCCFG\\S1000");
    EXPECT_EQ(paths.descriptionFile, L"C:\\Data\\Morvenit\\KVProductFamily\\IPCCFG\\S1000.cfg");
    EXPECT_EQ(AxesCataloguePath(L"C:\\Data"),
              L"C:\\Data\\Morvenit\\KVProductFamily\\Axes\\axes.xml");
}

TEST(SpecificationPaths, BeginAtTheRootWithoutADataFolder) {
    const SpecificationPaths paths = PathsOfSpecification(L"", L"S1000");
    EXPECT_EQ(paths.folder, L"\\Morvenit\\KVProductFamily\\IPCCFG\\S1000");
    EXPECT_EQ(paths.descriptionFile, L"\\Morvenit\\KVProductFamily\\IPCCFG\\S1000.cfg");
    EXPECT_EQ(AxesCataloguePath(L""), L"\\Morvenit\\KVProductFamily\\Axes\\axes.xml");
}

TEST(SpecificationPaths, OfferTheLanguageSubfolderOnlyWithALanguageAndForAPossibleName) {
    EXPECT_EQ(LanguageCandidate(L"C:\\S", L"de", L"Types.xml"), L"C:\\S\\de\\Types.xml");
    EXPECT_EQ(LanguageCandidate(L"C:\\S", L"", L"Types.xml"), std::nullopt);
    EXPECT_EQ(LanguageCandidate(L"C:\\S", L"de", L"*.xml"), std::nullopt);
    EXPECT_EQ(LanguageCandidate(L"C:\\S", L"de", L"Types.xm?"), std::nullopt);
    EXPECT_EQ(PlainCandidate(L"C:\\S", L"Types.xml"), L"C:\\S\\Types.xml");
    EXPECT_EQ(PlainCandidate(L"", L"Types.xml"), L"\\Types.xml");
}

TEST(Selection, PutsTheLanguageBetweenDoubleQuotes) {
    EXPECT_EQ(ConfigurationOfLanguage(L"de"), L"//configuration[@lang=\"de\"]");
    EXPECT_EQ(ConfigurationOfLanguage(L"d'e"), L"//configuration[@lang=\"d'e\"]");
    EXPECT_EQ(ConfigurationOfLanguage(L"]|/*\\ \t\r\n"),
              L"//configuration[@lang=\"]|/*\\ \t\r\n\"]");
}

TEST(Selection, PutsTheAxesIdBetweenSingleQuotes) {
    EXPECT_EQ(ModelFileOfAxes(L"std"), L"/models/axes[@id='std']/vrmlfile");
    EXPECT_EQ(ModelFileOfAxes(L""), L"/models/axes[@id='']/vrmlfile");
    EXPECT_EQ(ModelFileOfAxes(L"a\"b"), L"/models/axes[@id='a\"b']/vrmlfile");
}

TEST(Selection, IsNotMadeOfATextThatWouldBreakIt) {
    EXPECT_EQ(ConfigurationOfLanguage(L"\""), std::nullopt);
    EXPECT_EQ(ConfigurationOfLanguage(L"de\"] | //*[\"\"=\""), std::nullopt);
    EXPECT_EQ(ConfigurationOfLanguage(L"d\x01"), std::nullopt);
    EXPECT_EQ(ModelFileOfAxes(L"'"), std::nullopt);
    EXPECT_EQ(ModelFileOfAxes(L"std' or '1'='1"), std::nullopt);
    EXPECT_EQ(ModelFileOfAxes(L"\x1F"), std::nullopt);
}

} // namespace
} // namespace zt
