#include "framework/String.h"

#include <gtest/gtest.h>

namespace {

TEST(FrameworkString, HoldsTheText) {
    const CString text(L"a\x0416");
    EXPECT_STREQ(text.GetString(), L"a\x0416");
    EXPECT_STREQ(static_cast<const wchar_t*>(text), L"a\x0416");
    EXPECT_EQ(text.GetLength(), 2);
    EXPECT_FALSE(text.IsEmpty());
}

TEST(FrameworkString, IsEmptyForNoText) {
    for (const CString& text : {CString(), CString(static_cast<const wchar_t*>(nullptr))}) {
        EXPECT_TRUE(text.IsEmpty());
        EXPECT_EQ(text.GetLength(), 0);
        EXPECT_STREQ(text.GetString(), L"");
    }
}

TEST(FrameworkString, GrowsByATextAtItsEnd) {
    CString text = CString(L"Can't insert metadata: ") + L"Title";
    EXPECT_STREQ(text, L"Can't insert metadata: Title");
    text += nullptr;
    text += L"!";
    EXPECT_STREQ(text, L"Can't insert metadata: Title!");
}

} // namespace
