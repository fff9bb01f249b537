#include "components/InstallationTexts.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

TEST(InstallationTexts, MakesAVersionDotted) {
    EXPECT_EQ(DottedVersion(L"1, 4, 0, 12"), L"1.4.0.12");
    EXPECT_EQ(DottedVersion(L"1.4.0.12"), L"1.4.0.12");
    EXPECT_EQ(DottedVersion(L"  2 ,,3 beta "), L"2..3beta");
    // Only blanks go.
    EXPECT_EQ(DottedVersion(L"1,\t2"), L"1.\t2");
    EXPECT_EQ(DottedVersion(L""), L"");
}

TEST(InstallationTexts, KeepsThePathOfACommand) {
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

TEST(InstallationTexts, NameTheRegistryKeyOfAProduct) {
    EXPECT_EQ(ProductKeyName(L"ZeltorCatalog", L"1.4"), L"Software\\Morvenit\\ZeltorCatalog\\1.4");
    EXPECT_EQ(ProductKeyName(L"ZeltorCatalog", L""), L"Software\\Morvenit\\ZeltorCatalog");
}

} // namespace
} // namespace zt
