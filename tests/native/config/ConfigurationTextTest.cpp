#include "config/AxesPosition.h"
#include "support/Text.h"
#include "components/InstallationTexts.h"
#include "config/SpecificationTexts.h"
#include "config/SpecificationTexts.h"

#include <gtest/gtest.h>

#include <cwchar>

namespace zt {
namespace {

TEST(IntegerText, IsTheNumberThatTheTextBeginsWith) {
    const struct {
        const wchar_t* text;
        std::int32_t number;
    } rules[] = {
        {nullptr, 0},
        {L"", 0},
        {L"7", 7},
        {L"10", 10},
        {L"010", 10},
        {L"2a", 2},
        {L"2.9", 2},
        {L"0x10", 0},
        {L"version 3", 0},
        {L" \t\r\n12", 12},
        {L"+5", 5},
        {L"-5", -5},
        {L"- 5", 0},
        {L"+-5", 0},
        {L"1 000", 1},
        {L"2147483647", 2147483647},
        {L"-2147483648", -2147483647 - 1},
        {L"2147483648", 2147483647},
        {L"-2147483649", -2147483647 - 1},
        {L"4294967297", 2147483647},
        {L"99999999999999999999999999", 2147483647},
        {L"-99999999999999999999999999", -2147483647 - 1},
    };
    for (const auto& rule : rules)
        EXPECT_EQ(LeadingInteger(rule.text), rule.number)
            << testing::PrintToString(rule.text != nullptr ? rule.text : L"(null)");
}

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

TEST(ProductText, MakesAVersionDotted) {
    EXPECT_EQ(DottedVersion(L"1, 4, 0, 12"), L"1.4.0.12");
    EXPECT_EQ(DottedVersion(L"1.4.0.12"), L"1.4.0.12");
    EXPECT_EQ(DottedVersion(L"  2 ,,3 beta "), L"2..3beta");
    // Only blanks go.
    EXPECT_EQ(DottedVersion(L"1,\t2"), L"1.\t2");
    EXPECT_EQ(DottedVersion(L""), L"");
}

TEST(ProductText, KeepsThePathOfACommand) {
    const struct {
        const wchar_t* command;
        const wchar_t* path;
    } rules[] = {
        {L"", L""},
        {L"C:\\Program Files\\Z\\z.exe", L"C:\\Program Files\\Z\\z.exe"},
        {L"C:\\z.exe /a \"b\"", L"C:\\z.exe /a \"b\""},
        {L"\"C:\\Program Files\\Z\\z.exe\"", L"C:\\Program Files\\Z\\z.exe"},
        {L"\"C:\\Program Files\\Z\\z.exe\" /a /b", L"C:\\Program Files\\Z\\z.exe"},
        {L"\"C:\\z.exe\" \"b\"", L"C:\\z.exe\" \"b"},
        {L"\"C:\\z.exe", L""},
        {L"\"", L""},
        {L"\"\"", L""},
        {L" \"C:\\z.exe\"", L" \"C:\\z.exe\""},
    };
    for (const auto& rule : rules)
        EXPECT_EQ(PathOfCommand(rule.command), rule.path);
}

TEST(ProductText, NamesTheRegistryKeyOfAProduct) {
    EXPECT_EQ(ProductKeyName(L"ZeltorCatalog", false), L"Software\\Morvenit\\ZeltorCatalog\\1.4");
    EXPECT_EQ(ProductKeyName(L"ZeltorManual", false), L"Software\\Morvenit\\ZeltorManual\\1.4");
    EXPECT_EQ(ProductKeyName(L"ZeltorLearning", false), L"Software\\Morvenit\\ZeltorLearning\\1.4");
    EXPECT_EQ(ProductKeyName(L"ZeltorText", false), L"Software\\Morvenit\\ZeltorText\\1.0");
    EXPECT_EQ(ProductKeyName(L"ZeltorIllustrator", false),
              L"Software\\Morvenit\\ZeltorIllustrator\\1.0");
    // The case counts, and so does every character.
    EXPECT_EQ(ProductKeyName(L"zeltortext", false), L"Software\\Morvenit\\zeltortext\\1.4");
    EXPECT_EQ(ProductKeyName(L"ZeltorText2", false), L"Software\\Morvenit\\ZeltorText2\\1.4");
    EXPECT_EQ(ProductKeyName(L"", false), L"Software\\Morvenit\\\\1.4");
}

TEST(ProductText, LeavesTheVersionOutOfTheKeyOnRequest) {
    EXPECT_EQ(ProductKeyName(L"ZeltorManual", true), L"Software\\Morvenit\\ZeltorManual");
    EXPECT_EQ(ProductKeyName(L"ZeltorText", true), L"Software\\Morvenit\\ZeltorText");
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
