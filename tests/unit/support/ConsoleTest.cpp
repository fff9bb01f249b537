#include "support/Output.h"

#include <gtest/gtest.h>

#include <string>

namespace zt {
namespace {

std::string Captured(const wchar_t* format, const wchar_t* value) {
    testing::internal::CaptureStdout();
    ConsolePrint(format, value);
    return testing::internal::GetCapturedStdout();
}

TEST(ConsoleText, IsTheFormattedOne) {
    EXPECT_EQ(Captured(L"%s\n", L"100 % of it, %s too"), "100 % of it, %s too\n");
}

TEST(ConsoleText, KeepsItsEndBehindCharactersThatHaveNoForm) {
    EXPECT_EQ(Captured(L"<%s>\n", L"\x0416 \xE4 \xD83D\xDE00"), "<? \xE4 ?>\n");
}

TEST(ConsoleText, HasNoLimitOfLength) {
    const std::wstring value(30000, L'x');
    EXPECT_EQ(Captured(L"%s\n", value.c_str()), std::string(30000, 'x') + "\n");
}

} // namespace
} // namespace zt
