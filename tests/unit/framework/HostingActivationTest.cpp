// Hosting of controls: in-place activation.
#include "tests/support/HostingFixture.h"

using namespace zt::test;
using ::testing::ElementsAre;

TEST_F(Hosting, MakesTheControlsWindowAChildOfTheGivenStyleRectangleIdAndTitle) {
    const TestControlClass controls({});
    ASSERT_TRUE(m_control.CreateControl(TestControlClass::IdText(), L"Editor",
                                        ChildVisible | WS_BORDER, {10, 20, 40, 60}, m_window, 77));
    ASSERT_NE(m_control.m_hWnd, nullptr);
    EXPECT_EQ(GetAncestor(m_control.m_hWnd, GA_PARENT), m_window.m_hWnd);
    const DWORD style = static_cast<DWORD>(GetWindowLongPtrW(m_control.m_hWnd, GWL_STYLE));
    EXPECT_EQ(style, ChildVisible | WS_BORDER | SS_NOTIFY);
    EXPECT_EQ(GetDlgCtrlID(m_control.m_hWnd), 77);
    wchar_t title[16] = {};
    GetWindowTextW(m_control.m_hWnd, title, 16);
    EXPECT_STREQ(title, L"Editor");
    RECT rect = {};
    GetWindowRect(m_control.m_hWnd, &rect);
    MapWindowPoints(nullptr, m_window.m_hWnd, reinterpret_cast<POINT*>(&rect), 2);
    EXPECT_EQ(rect.left, 10);
    EXPECT_EQ(rect.top, 20);
    EXPECT_EQ(rect.right, 40);
    EXPECT_EQ(rect.bottom, 60);
}

TEST_F(Hosting, HidesTheWindowOfAControlThatIsNotToBeVisible) {
    const TestControlClass controls(With(Activation::Windowed));
    ASSERT_TRUE(
        m_control.CreateControl(TestControlClass::IdText(), nullptr, WS_CHILD, Small, m_window, 1));
    EXPECT_EQ(GetWindowLongPtrW(m_control.m_hWnd, GWL_STYLE) & WS_VISIBLE, 0);
}

TEST_F(Hosting, TellsTheControlItsRectangleAndItsExtent) {
    ASSERT_TRUE(Create({}, {10, 20, 106, 68}));
    const ControlRecord& record = ControlRecord::Get();
    EXPECT_EQ(record.activatedAt.left, 10);
    EXPECT_EQ(record.activatedAt.top, 20);
    EXPECT_EQ(record.activatedAt.right, 106);
    EXPECT_EQ(record.activatedAt.bottom, 68);
    // 96 by 48 pixels at 96 pixels an inch.
    EXPECT_EQ(record.extent.cx, 2540);
    EXPECT_EQ(record.extent.cy, 1270);
}

TEST_F(Hosting, TakesAWindowThatAControlMadeElsewhereIntoItsParent) {
    ASSERT_TRUE(Create(With(Activation::Elsewhere)));
    ASSERT_NE(m_control.m_hWnd, nullptr);
    EXPECT_EQ(GetAncestor(m_control.m_hWnd, GA_PARENT), m_window.m_hWnd);
    EXPECT_NE(GetWindowLongPtrW(m_control.m_hWnd, GWL_STYLE) & WS_CHILD, 0);
}

TEST_F(Hosting, KeepsAControlThatActivatesWithoutAWindow) {
    ASSERT_TRUE(Create(With(Activation::Windowless)));
    EXPECT_EQ(m_control.m_hWnd, nullptr);
    EXPECT_NE(m_control.GetControlUnknown(), nullptr);
    ControlRecord::Get().calls.clear();
    EXPECT_TRUE(m_control.DestroyWindow());
    EXPECT_THAT(Calls(), ElementsAre("Deactivate", "Close", "ClearClientSite", "gone"));
}

TEST_F(Hosting, KeepsAControlThatNeverActivates) {
    for (const Activation activation : {Activation::Never, Activation::Refused}) {
        ASSERT_TRUE(Create(With(activation)));
        EXPECT_EQ(m_control.m_hWnd, nullptr);
        EXPECT_NE(m_control.GetControlUnknown(), nullptr);
        ControlRecord::Get().calls.clear();
        EXPECT_TRUE(m_control.DestroyWindow());
        EXPECT_THAT(Calls(), ElementsAre("Close", "ClearClientSite", "gone"));
    }
}
