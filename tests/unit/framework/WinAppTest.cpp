#include "framework/WinApp.h"

#include <gtest/gtest.h>

namespace {

constexpr UINT Unattended = SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX;

const HINSTANCE Module = GetModuleHandleW(nullptr);

class FrameworkStart : public testing::Test {
  protected:
    FrameworkStart() : m_mode(SetErrorMode(0)) {}
    ~FrameworkStart() override { SetErrorMode(m_mode); }

  private:
    UINT m_mode;
};

TEST_F(FrameworkStart, HandsItsArgumentsToTheApplicationObject) {
    CWinApp app;
    EXPECT_TRUE(AfxWinInit(Module, nullptr, L"Z.exe -S", SW_SHOW));
    EXPECT_EQ(app.m_hInstance, Module);
    EXPECT_STREQ(app.m_lpCmdLine, L"Z.exe -S");
    EXPECT_EQ(app.m_nCmdShow, SW_SHOW);
}

TEST_F(FrameworkStart, FailsWithoutAnApplicationObject) {
    EXPECT_FALSE(AfxWinInit(Module, nullptr, L"Z.exe", SW_HIDE));
}

TEST_F(FrameworkStart, FailsWithoutAModule) {
    const CWinApp app;
    EXPECT_FALSE(AfxWinInit(nullptr, nullptr, L"Z.exe", SW_HIDE));
    EXPECT_EQ(app.m_lpCmdLine, nullptr);
}

TEST_F(FrameworkStart, FailsWithAPreviousInstance) {
    const CWinApp app;
    EXPECT_FALSE(AfxWinInit(Module, Module, L"Z.exe", SW_HIDE));
}

TEST_F(FrameworkStart, LetsNoErrorBoxStopTheProcess) {
    const CWinApp app;
    AfxWinInit(Module, nullptr, L"Z.exe", SW_HIDE);
    EXPECT_EQ(GetErrorMode() & Unattended, Unattended);
}

TEST_F(FrameworkStart, KeepsWhatTheErrorModeHeldBefore) {
    const CWinApp app;
    SetErrorMode(SEM_NOALIGNMENTFAULTEXCEPT);
    AfxWinInit(Module, nullptr, L"Z.exe", SW_HIDE);
    EXPECT_EQ(GetErrorMode(), Unattended | SEM_NOALIGNMENTFAULTEXCEPT);
}

TEST(ApplicationObject, IsKnownForItsLifetime) {
    EXPECT_EQ(AfxGetApp(), nullptr);
    {
        CWinApp app;
        EXPECT_EQ(AfxGetApp(), &app);
        EXPECT_EQ(app.m_hInstance, nullptr);
        EXPECT_EQ(app.m_lpCmdLine, nullptr);
        EXPECT_EQ(app.m_nCmdShow, SW_HIDE);
    }
    EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST(ControlHosting, IsThereOnceEnabled) {
    AfxEnableControlContainer();
    EXPECT_TRUE(AfxIsControlContainerEnabled());
}

} // namespace
