#include "app/Steps.h"

#include "app/ZTInvisible.h"
#include "tests/support/Files.h"
#include "tests/support/Isolation.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

class NotificationStep : public testing::Test {
  protected:
    NotificationStep() { app.m_strExchangePath = exchange.Path(); }
    int Notify() {
        testing::internal::CaptureStdout();
        const int result = NotifyContentManager(app, L"STATUS", L"SUCCESS");
        output = testing::internal::GetCapturedStdout();
        return result;
    }

    TemporaryFolder exchange;
    CZTInvisible app;
    std::string output;
};

TEST_F(NotificationStep, SucceedsSilentlyWithoutAClient) {
    EXPECT_EQ(Notify(), 1);
    EXPECT_EQ(output, "");
}

TEST_F(NotificationStep, PrintsItsFailureWithoutALineEnd) {
    WriteBytes(exchange.Path(L"cms.ini"), "[CMS]\nPort=x\n");
    EXPECT_EQ(Notify(), 0);
    EXPECT_EQ(output, "Can't read port number to connect to CMS client");
}

} // namespace
} // namespace zt::test
