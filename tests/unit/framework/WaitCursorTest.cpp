#include "framework/WinApp.h"

#include <gtest/gtest.h>

namespace {

HCURSOR SystemCursor(LPWSTR name) {
    return LoadCursorW(nullptr, name);
}
HCURSOR Wait() {
    return SystemCursor(reinterpret_cast<LPWSTR>(IDC_WAIT));
}
HCURSOR Cross() {
    return SystemCursor(reinterpret_cast<LPWSTR>(IDC_CROSS));
}

TEST(WaitCursor, IsShownForItsLifetime) {
    SetCursor(Cross());
    {
        const CWaitCursor cursor;
        EXPECT_EQ(GetCursor(), Wait());
    }
    EXPECT_EQ(GetCursor(), Cross());
}

TEST(WaitCursor, IsShownAgainWhenAskedFor) {
    SetCursor(Cross());
    {
        CWaitCursor cursor;
        SetCursor(nullptr);
        cursor.Restore();
        EXPECT_EQ(GetCursor(), Wait());
    }
    EXPECT_EQ(GetCursor(), Cross());
}

} // namespace
