#include "config/XmlDocument.h"

#include "support/Text.h"
#include "tests/support/Fixtures.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <cwchar>

namespace zt::test {
namespace {

class Xml : public testing::Test {
  protected:
    bool LoadBytes(std::string_view bytes) {
        WriteFile(m_folder.Path(L"a.xml"), bytes);
        EXPECT_EQ(m_document.Create(), S_OK);
        return m_document.Load(m_folder.Path(L"a.xml").c_str());
    }

    TemporaryFolder m_folder;
    XmlDocument m_document;
};

TEST_F(Xml, IsNotLoadedWithoutADocument) {
    WriteFile(m_folder.Path(L"a.xml"), "<a/>");
    EXPECT_FALSE(m_document.Load(m_folder.Path(L"a.xml").c_str()));
    EXPECT_FALSE(m_document.SelectSingle(L"a"));
}

TEST_F(Xml, IsSelectedFromTheDocumentAndFromAnElement) {
    ASSERT_TRUE(LoadBytes("<a><b>1</b><c><b>2</b><b>3</b></c></a>"));
    EXPECT_STREQ(m_document.SelectSingle(L"a/b").Text(), L"1");
    const XmlElement c = m_document.SelectSingle(L"/a/c");
    EXPECT_STREQ(c.SelectSingle(L"b").Text(), L"2");
    const std::vector<XmlElement> all = c.SelectAll(L"b");
    ASSERT_EQ(all.size(), 2U);
    EXPECT_STREQ(all[0].Text(), L"2");
    EXPECT_STREQ(all[1].Text(), L"3");
    EXPECT_TRUE(c.SelectAll(L"x").empty());
    EXPECT_FALSE(c.SelectSingle(L"x"));
}

TEST_F(Xml, IsSelectedInXPath) {
    ASSERT_TRUE(LoadBytes("<a><b>1</b><b>2</b></a>"));
    // The older language counts from 0 and knows no position().
    EXPECT_STREQ(m_document.SelectSingle(L"a/b[1]").Text(), L"1");
    EXPECT_STREQ(m_document.SelectSingle(L"a/b[position()=2]").Text(), L"2");
}

TEST_F(Xml, HasAttributesThatMayBeEmptyOrMissing) {
    ASSERT_TRUE(LoadBytes("<a x=\"1\" y=\"\" z=' \"2\" '/>"));
    const XmlElement a = m_document.SelectSingle(L"a");
    ASSERT_TRUE(a.Attribute(L"x"));
    EXPECT_STREQ(*a.Attribute(L"x"), L"1");
    ASSERT_TRUE(a.Attribute(L"y"));
    EXPECT_EQ(a.Attribute(L"y")->length(), 0U);
    EXPECT_STREQ(*a.Attribute(L"z"), L" \"2\" ");
    EXPECT_FALSE(a.Attribute(L"X"));
}

TEST_F(Xml, GivesNothingForAMissingElement) {
    const XmlElement none;
    EXPECT_EQ(none.Text().length(), 0U);
    EXPECT_FALSE(none.Attribute(L"x"));
    EXPECT_FALSE(none.SelectSingle(L"x"));
    EXPECT_TRUE(none.SelectAll(L"x").empty());
}

TEST_F(Xml, HasATextForEveryElement) {
    ASSERT_TRUE(LoadBytes("<a><b/></a>"));
    EXPECT_STREQ(m_document.SelectSingle(L"a/b").Text(), L"");
}

TEST_F(Xml, IsReplacedByTheNextLoad) {
    ASSERT_TRUE(LoadBytes("<a/>"));
    EXPECT_FALSE(LoadBytes("<a>"));
    EXPECT_FALSE(m_document.SelectSingle(L"a"));
}

TEST(MessageWait, EndsAtOnceWhenTheConditionHolds) {
    EXPECT_TRUE(WaitWithMessages([] { return true; }, 0));
}

TEST(MessageWait, GivesUpAfterItsTime) {
    const ULONGLONG begin = GetTickCount64();
    EXPECT_FALSE(WaitWithMessages([] { return false; }, 50));
    EXPECT_GE(GetTickCount64() - begin, 50U);
}

TEST(MessageWait, PumpsTheMessagesOfItsThread) {
    static bool called = false;
    SetTimer(nullptr, 0, 10, [](HWND, UINT, UINT_PTR id, DWORD) {
        KillTimer(nullptr, id);
        called = true;
    });
    EXPECT_TRUE(WaitWithMessages([] { return called; }, 10'000));
}

TEST(MessageWait, LooksAgainOnlyAfterAWhile) {
    int looks = 0;
    EXPECT_FALSE(WaitWithMessages(
        [&looks] {
            ++looks;
            return false;
        },
        100));
    EXPECT_LE(looks, 20);
}

TEST(MessageWait, LeavesTheEndOfTheThreadToOthers) {
    PostQuitMessage(7);
    EXPECT_FALSE(WaitWithMessages([] { return false; }, 30));
    MSG message = {};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7U);
}

TEST(IntegerText, IsReadAsThePlatformsRuntimeReadsIt) {
    for (const wchar_t* text :
         {L"", L"7", L"010", L"2a", L"0x10", L" \t\v\f\r\n12", L"+5", L"-5", L"- 5", L"+-5",
          L"2147483647", L"2147483648", L"-2147483648", L"-2147483649", L"99999999999999999999999",
          L"-99999999999999999999999",
          L"\x00A0"
          L"12",
          L"\x3000"
          L"12",
          L"\x00B2"}) {
        EXPECT_EQ(LeadingInteger(text), _wtoi(text)) << testing::PrintToString(std::wstring(text));
        EXPECT_EQ(LeadingInteger(text), _wtol(text)) << testing::PrintToString(std::wstring(text));
    }
}

} // namespace
} // namespace zt::test
