// A window to host controls in, and the check that nothing is left of them.
#pragma once

#include "framework/Wnd.h"
#include "tests/support/TestControl.h"

#include <gmock/gmock.h>

namespace zt::test {

constexpr DWORD ChildVisible = 0x50000000;
constexpr RECT Small = {0, 0, 16, 16};

inline const std::vector<std::string>& Calls() {
    return ControlRecord::Get().calls;
}

class Hosting : public testing::Test {
  protected:
    void SetUp() override {
        AfxEnableControlContainer();
        ControlRecord::Reset();
        m_windowsBefore = CountWindows();
        MakeHost();
    }
    void TearDown() override {
        m_control.DestroyWindow();
        m_window.DestroyWindow();
        EXPECT_EQ(ControlRecord::Get().living, 0);
        EXPECT_EQ(CountWindows(), m_windowsBefore);
        ControlRecord::Reset();
    }

    void MakeHost() {
        ASSERT_TRUE(m_window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, 200, 100,
                                      nullptr, nullptr));
    }
    BOOL Create(const ControlTraits& traits, const RECT& rect = Small) {
        const TestControlClass controls(traits);
        return m_control.CreateControl(TestControlClass::IdText(), nullptr, ChildVisible, rect,
                                       m_window, 0);
    }

    int m_windowsBefore = 0;
    CWnd m_window;
    CWnd m_control;
};

inline ControlTraits With(Activation activation) {
    ControlTraits traits;
    traits.activation = activation;
    return traits;
}

} // namespace zt::test
