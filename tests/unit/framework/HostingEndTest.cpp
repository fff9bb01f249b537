// Hosting of controls: how a control is pulled down.
#include "tests/support/HostingFixture.h"

using namespace zt::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(Hosting, DeactivatesClosesClearsTheSiteAndReleasesInThisOrder) {
    ASSERT_TRUE(Create({}));
    const HWND window = m_control.m_hWnd;
    ControlRecord::Get().calls.clear();
    EXPECT_TRUE(m_control.DestroyWindow());
    EXPECT_THAT(Calls(), ElementsAre("Deactivate", "Close", "ClearClientSite", "gone"));
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(m_control.m_hWnd, nullptr);
    EXPECT_EQ(m_control.GetControlUnknown(), nullptr);
}

TEST_F(Hosting, PullsTheControlDownWhileAFailureUnwinds) {
    const TestControlClass controls({});
    try {
        CWnd window;
        ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, 16, 16, nullptr,
                                    nullptr));
        CWnd control;
        ASSERT_TRUE(control.CreateControl(TestControlClass::IdText(), nullptr, ChildVisible, Small,
                                          window, 0));
        ControlRecord::Get().calls.clear();
        throw L"failure";
    } catch (const wchar_t*) {
        EXPECT_THAT(Calls(), ElementsAre("Deactivate", "Close", "ClearClientSite", "gone"));
    }
}

TEST_F(Hosting, PullsAControlDownOnce) {
    ASSERT_TRUE(Create({}));
    EXPECT_TRUE(m_control.DestroyWindow());
    ControlRecord::Get().calls.clear();
    EXPECT_FALSE(m_control.DestroyWindow());
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(Hosting, PullsTheFirstControlDownWhereASecondTakesItsPlace) {
    ASSERT_TRUE(Create({}));
    ControlRecord::Get().calls.clear();
    ASSERT_TRUE(Create({}));
    EXPECT_THAT(Calls(), ElementsAre("Deactivate", "Close", "ClearClientSite", "gone",
                                     "GetMiscStatus", "SetClientSite", "SetExtent", "Activate"));
    EXPECT_EQ(ControlRecord::Get().living, 1);
}

TEST_F(Hosting, PullsAControlDownThatLostItsWindowWithItsParents) {
    ASSERT_TRUE(Create({}));
    m_window.DestroyWindow();
    ControlRecord::Get().calls.clear();
    EXPECT_TRUE(m_control.DestroyWindow());
    EXPECT_THAT(Calls(), ElementsAre("Deactivate", "Close", "ClearClientSite", "gone"));
}

TEST_F(Hosting, LeavesAControlAliveThatSomeoneElseHolds) {
    ASSERT_TRUE(Create({}));
    ComPtr<IUnknown> held(m_control.GetControlUnknown());
    ControlRecord::Get().calls.clear();
    m_control.DestroyWindow();
    EXPECT_THAT(Calls(), ElementsAre("Deactivate", "Close", "ClearClientSite"));
    EXPECT_EQ(held.Reset(), 0u);
}

// ---- one of the platform's own controls ----

namespace {

class HostingOfThePlatformsControl : public Hosting,
                                     public testing::WithParamInterface<const wchar_t*> {};

} // namespace

TEST_P(HostingOfThePlatformsControl, ActivatesItAndPullsItDown) {
    ASSERT_TRUE(
        m_control.CreateControl(GetParam(), nullptr, ChildVisible, {0, 0, 64, 48}, m_window, 5));
    ASSERT_NE(m_control.m_hWnd, nullptr);
    EXPECT_EQ(GetAncestor(m_control.m_hWnd, GA_PARENT), m_window.m_hWnd);
    EXPECT_EQ(GetDlgCtrlID(m_control.m_hWnd), 5);
    const HWND window = m_control.m_hWnd;
    EXPECT_TRUE(m_control.DestroyWindow());
    EXPECT_FALSE(IsWindow(window));
    EXPECT_EQ(GetWindow(m_window.m_hWnd, GW_CHILD), nullptr);
}

INSTANTIATE_TEST_SUITE_P(Hosting, HostingOfThePlatformsControl,
                         testing::Values(L"WMPlayer.OCX", L"Shell.Explorer"), [](const auto& info) {
                             return std::string(info.index == 0 ? "MediaPlayer" : "Browser");
                         });
