// What the messages to the content-management client leave on standard output.
#include "tests/support/LoopbackPeer.h"

#include "app/ZTInvisible.h"
#include "cms/NotifyContentManager.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <io.h>
#include <string>

namespace {

using namespace zt;
using namespace zt::test;

std::string Framed(const std::string& text) {
    const std::size_t size = text.size() + 3;
    return std::string{static_cast<char>(size / 256), static_cast<char>(size % 256)} + text + '\0';
}

// What action writes to standard output.
std::string Printed(const TemporaryFolder& folder, const std::function<void()>& action) {
    const std::filesystem::path file = folder.Path(L"stdout.txt");
    std::fflush(stdout);
    const int saved = _dup(1);
    std::FILE* output = _wfopen(file.c_str(), L"wb");
    _dup2(_fileno(output), 1);
    action();
    std::fflush(stdout);
    _dup2(saved, 1);
    _close(saved);
    std::fclose(output);
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

class NotificationOutput : public testing::Test {
  protected:
    int m_result = -1;

    std::string PrintedFor(const std::string& answer) {
        LoopbackPeer peer([&](Connection& connection) {
            connection.ReadFrame();
            connection.Send(answer);
        });
        std::ofstream(std::filesystem::path(m_exchange.Path(L"cms.ini")))
            << "[CMS]\nPort=" << peer.Port() << "\nTimeout=10\n";
        return Printed(m_exchange, [this] {
            CZTInvisible app;
            app.m_strExchangePath = m_exchange.Path();
            m_result = NotifyContentManager(app, L"STATUS", L"SUCCESS");
        });
    }

    TemporaryFolder m_exchange;
};

TEST_F(NotificationOutput, IsNothingAfterSuccess) {
    EXPECT_EQ(PrintedFor(Framed("TOOL_RESPONSE_MESSAGE|OK")), "");
    EXPECT_EQ(m_result, 1);
}

TEST_F(NotificationOutput, IsTheTextWithoutALineEnd) {
    EXPECT_EQ(PrintedFor(Framed("TOOL_RESPONSE_MESSAGE")), "Invalid response from CMS client");
    EXPECT_EQ(m_result, 0);
}

TEST_F(NotificationOutput, IsLiteralWhereTheAnswerHoldsPercentSigns) {
    EXPECT_EQ(PrintedFor(Framed("TOOL_RESPONSE_MESSAGE|ERROR|100%s %n %d%%")),
              "CMS client reported error: 100%s %n %d%%");
    EXPECT_EQ(m_result, 0);
}

TEST_F(NotificationOutput, HasAQuestionMarkForACharacterWithoutAForm) {
    EXPECT_EQ(PrintedFor(Framed("TOOL_RESPONSE_MESSAGE|ERROR|<\xE6\x97\xA5> end")),
              "CMS client reported error: <?> end");
}

} // namespace
