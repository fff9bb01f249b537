#include "support/Text.h"

#include <gtest/gtest.h>

namespace zt {
namespace {

// Spelt as single units, so that the text is the same whatever the width of wchar_t.
constexpr wchar_t High = 0xD83D;
constexpr wchar_t Low = 0xDE00;

TEST(RuntimeText, KeepsEveryCharacterOfOneByte) {
    for (int code = 0; code <= 0xFF; ++code)
        EXPECT_EQ(ToRuntimeText(std::wstring(1, static_cast<wchar_t>(code))),
                  std::string(1, static_cast<char>(code)));
}

TEST(RuntimeText, HasAQuestionMarkForEachOtherCharacter) {
    EXPECT_EQ(ToRuntimeText(L"a\x0100z\x0416\x20AC\xFFFF.\n"), "a?z???.\n");
}

TEST(RuntimeText, HasOneQuestionMarkForASurrogatePair) {
    EXPECT_EQ(ToRuntimeText(std::wstring{L'a', High, Low, L'b', High, Low, High, Low}), "a?b??");
}

TEST(RuntimeText, HasOneQuestionMarkForEachSurrogateAlone) {
    EXPECT_EQ(ToRuntimeText(std::wstring{High, L'a'}), "?a");
    EXPECT_EQ(ToRuntimeText(std::wstring{L'a', High}), "a?");
    EXPECT_EQ(ToRuntimeText(std::wstring{Low, High}), "??");
    EXPECT_EQ(ToRuntimeText(std::wstring{High, High, Low}), "??");
    EXPECT_EQ(ToRuntimeText(std::wstring{Low, L'\xE4'}), "?\xE4");
}

TEST(RuntimeText, HasNoLimitOfLength) {
    EXPECT_EQ(ToRuntimeText(std::wstring(100000, L'\x0416')), std::string(100000, '?'));
}

TEST(RuntimeText, IsEmptyForTheEmptyText) {
    EXPECT_EQ(ToRuntimeText(L""), "");
}

} // namespace
} // namespace zt
