#include "components/Texts.h"

#include "framework/Exceptions.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

TEST(MakeText, KeepsEveryCharacter) {
    const std::wstring text(L"a\0b\x00E4\x4E2D", 5);
    const _bstr_t made = MakeText(text);
    EXPECT_EQ(std::wstring(made, made.length()), text);
}

TEST(MakeText, OfAnEmptyTextIsNotNull) {
    EXPECT_NE(Borrow(MakeText(L"")), nullptr);
    EXPECT_NE(Borrow(MakeText("")), nullptr);
    EXPECT_EQ(MakeText(L"").length(), 0u);
}

TEST(MakeText, OfANarrowTextReadsTheThreadsAnsiCodePage) {
    EXPECT_STREQ(MakeText("ZeltorAuthor_Invisible"), L"ZeltorAuthor_Invisible");
    wchar_t expected[8] = {};
    MultiByteToWideChar(CP_THREAD_ACP, 0, "\xE4", 1, expected, 8);
    EXPECT_STREQ(MakeText("\xE4"), expected);
}

// A text so long that there cannot be room for it; the characters themselves are not read.
TEST(MakeText, RaisesTheMemoryExceptionWithoutRoom) {
    for (const std::size_t length : {std::size_t(0x7FFFFFFF), std::size_t(0x100000001)}) {
        try {
            MakeText(std::wstring_view(L"x", length));
            ADD_FAILURE() << "nothing was raised";
        } catch (CMemoryException* failure) {
            wchar_t message[64] = {};
            EXPECT_TRUE(failure->GetErrorMessage(message, 64));
            failure->Delete();
        }
    }
}

TEST(Borrow, GivesTheHoldersOwnStringOrNull) {
    const _bstr_t text(L"text");
    EXPECT_EQ(Borrow(text), static_cast<const wchar_t*>(text));
    EXPECT_EQ(Borrow(_bstr_t()), nullptr);
}

TEST(OrEmpty, NeverGivesNull) {
    EXPECT_STREQ(OrEmpty(_bstr_t()), L"");
    EXPECT_STREQ(OrEmpty(_bstr_t(L"")), L"");
    EXPECT_STREQ(OrEmpty(_bstr_t(L"text")), L"text");
}

} // namespace
} // namespace zt::test
