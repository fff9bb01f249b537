#include "support/Output.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

TEST(FormattedText, TakesWideTexts) {
    EXPECT_EQ(FormatText(L"Document '%ws' of '%s'\n", L"\x0416", L"b%s"),
              L"Document '\x0416' of 'b%s'\n");
}

TEST(FormattedText, TakesNumbers) {
    EXPECT_EQ(FormatText(L"%d, 0x%08X", -5, 0x80004005U), L"-5, 0x80004005");
}

TEST(FormattedText, HasNoLimitOfLength) {
    const std::wstring value(200000, L'x');
    EXPECT_EQ(FormatText(L"<%s>", value.c_str()), L"<" + value + L">");
}

TEST(FormattedText, MayBeEmpty) {
    EXPECT_EQ(FormatText(L"%s", L""), L"");
}

TEST(FormattedText, ShowsAMissingText) {
    EXPECT_EQ(FormatText(L"%s", static_cast<const wchar_t*>(nullptr)), L"(null)");
}

} // namespace
} // namespace zt
