// Messages to the content-management client, from the settings file to the result.
#include "tests/support/LoopbackPeer.h"

#include "cms/Notification.h"
#include "tests/support/Isolation.h"

#include <gmock/gmock.h>

#include <fstream>
#include <string>

namespace {

using namespace zt;
using namespace zt::test;
using namespace std::string_literals;

int g_clientsAskedFor;
TcpMessageClient* g_client;

TcpMessageClient& CountedClient() {
    ++g_clientsAskedFor;
    return *g_client;
}

class Notification : public testing::Test {
  protected:
    Notification() {
        g_clientsAskedFor = 0;
        g_client = &m_client;
    }

    void WriteSettings(const std::string& text) {
        std::ofstream(std::filesystem::path(m_exchange.Path(L"cms.ini")), std::ios::binary) << text;
    }
    void WriteSettings(const LoopbackPeer& peer, const std::string& rest = "Timeout=10\r\n") {
        WriteSettings("[CMS]\r\nPort=" + std::to_string(peer.Port()) + "\r\n" + rest);
    }
    Delivery Deliver(const wchar_t* action = L"STATUS", const wchar_t* argument = L"SUCCESS") {
        return DeliverNotification(m_exchange.Path(), action, argument, CountedClient);
    }

    // The port that the settings lead to stands in the text of a connection that is refused.
    void ExpectConnectingTo(const std::wstring& port) {
        TcpPlatform platform;
        platform.control = [](SOCKET, long, u_long*) -> int { return SOCKET_ERROR; };
        TcpMessageClient client(platform);
        g_client = &client;
        const Delivery delivery = Deliver();
        EXPECT_EQ(delivery.result, 0);
        EXPECT_EQ(delivery.text, L"Error connecting to CMS client:\nCan't connect to port " + port);
        g_client = &m_client;
    }

    TemporaryFolder m_exchange;
    TcpMessageClient m_client;
};

// ---- settings ----

TEST_F(Notification, NeedsNoClientWithoutSettings) {
    for (const char* settings :
         {"", "[Other]\r\nPort=80\r\n", "[CMS]\r\nPort=\r\n", "[CMS]\r\nPort=80\r\nTimeout=\r\n"}) {
        WriteSettings(settings);
        const Delivery delivery = Deliver();
        EXPECT_EQ(delivery.result, 1) << settings;
        EXPECT_EQ(delivery.text, L"") << settings;
    }
    EXPECT_EQ(g_clientsAskedFor, 0);
}

TEST_F(Notification, ReportsAnInvalidPortBeforeAnEmptyTimeout) {
    WriteSettings("[CMS]\r\nPort=x1\r\nTimeout=\r\n");
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.result, 0);
    EXPECT_EQ(delivery.text, L"Can't read port number to connect to CMS client");
    EXPECT_EQ(g_clientsAskedFor, 0);
}

TEST_F(Notification, CutsThePortAfterEightCharacters) {
    WriteSettings("[CMS]\r\nPort=000047119\r\n");
    ExpectConnectingTo(L"4711");
}

TEST_F(Notification, TakesTheLower16BitsOfThePort) {
    WriteSettings("[CMS]\r\nPort=70247\r\n");
    ExpectConnectingTo(L"4711");
}

TEST_F(Notification, FindsSectionAndKeysInAnyCase) {
    WriteSettings("[cms]\r\nPORT=4711\r\n");
    ExpectConnectingTo(L"4711");
}

struct Wait {
    const char* name;
    const char* settings;
    Milliseconds wait;
};

class NotificationWait : public Notification, public testing::WithParamInterface<Wait> {};

Milliseconds g_wait;

TEST_P(NotificationWait, IsTheOneOfTheSettings) {
    TcpPlatform platform;
    platform.waitUntilReadable = [](SOCKET, Milliseconds patience) {
        g_wait = patience;
        return 0;
    };
    LoopbackPeer peer([](Connection& connection) { connection.ReadToEnd(); });
    TcpMessageClient client(platform);
    g_client = &client;
    WriteSettings(peer, GetParam().settings);
    const Delivery delivery = Deliver();
    g_client = &m_client;
    EXPECT_EQ(delivery.result, 0);
    EXPECT_EQ(delivery.text, L"Error receiving response from CMS client:\n"
                             L"Timeout occured while waiting for response from server");
    EXPECT_EQ(g_wait, GetParam().wait);
}

INSTANTIATE_TEST_SUITE_P(
    Cms, NotificationWait,
    testing::Values(Wait{"MissingKey", "", Milliseconds(600'000)},
                    Wait{"Seconds", "Timeout=7\r\n", Milliseconds(7'000)},
                    Wait{"Zero", "Timeout=0\r\n", Milliseconds(0)},
                    Wait{"NoNumber", "Timeout=soon\r\n", Milliseconds(0)},
                    Wait{"NumberThenText", "Timeout=5s\r\n", Milliseconds(5'000)},
                    Wait{"NineCharacters", "Timeout=000000079\r\n", Milliseconds(7'000)}),
    [](const auto& testCase) { return testCase.param.name; });

// ---- messages ----

TEST_F(Notification, GoesOutInOneFrameOnAConnectionOfItsOwn) {
    std::string received;
    std::string rest = "never";
    LoopbackPeer peer([&](Connection& connection) {
        received = connection.ReadFrame();
        connection.Send(Framed("TOOL_RESPONSE_MESSAGE|OK"));
        rest = connection.ReadToEnd();
    });
    WriteSettings(peer);
    const Delivery delivery = Deliver(L"SAVE_AND_CLOSE", L"\u65E5\u672C.kvp");
    EXPECT_EQ(delivery.result, 1);
    EXPECT_EQ(delivery.text, L"");
    peer.Stop();
    EXPECT_EQ(received, "\x00\x3ETOOL_ACTION_MESSAGE|ZELTOR_MANUAL|SAVE_AND_CLOSE|"
                        "\xE6\x97\xA5\xE6\x9C\xAC.kvp\x00"s);
    EXPECT_EQ(rest, "");
    EXPECT_EQ(peer.Connections(), 1);
}

// ---- answers ----

struct Reply {
    const char* name;
    std::string bytes;
    int result;
    std::wstring text;
};

class NotificationReply : public Notification, public testing::WithParamInterface<Reply> {};

TEST_P(NotificationReply, IsJudged) {
    LoopbackPeer peer([](Connection& connection) {
        connection.ReadFrame();
        connection.Send(GetParam().bytes);
    });
    WriteSettings(peer);
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.result, GetParam().result);
    EXPECT_EQ(delivery.text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Cms, NotificationReply,
    testing::Values(
        Reply{"Ok", Framed("TOOL_RESPONSE_MESSAGE|OK"), 1, L""},
        Reply{"NonLatinError", Framed("TOOL_RESPONSE_MESSAGE|ERROR|\xE6\x97\xA5"), 0,
              L"CMS client reported error: \u65E5"},
        Reply{"NoFrame", "OK", 0,
              L"Error receiving response from CMS client:\nInvalid response received from server"},
        Reply{"NoAnswer", "", 0,
              L"Error receiving response from CMS client:\nInvalid response received from server"}),
    [](const auto& testCase) { return testCase.param.name; });

// ---- failures ----

TEST_F(Notification, ReportsARefusedPort) {
    const Winsock winsock;
    const std::string port = std::to_string(RefusingPort());
    WriteSettings("[CMS]\r\nPort=" + port + "\r\n");
    const Delivery delivery = Deliver();
    EXPECT_EQ(delivery.result, 0);
    EXPECT_EQ(delivery.text, L"Error connecting to CMS client:\nCan't connect to port " +
                                 std::wstring(port.begin(), port.end()));
}

TEST_F(Notification, ReportsAMessageThatIsTooLongAndDisconnects) {
    std::string received = "never";
    LoopbackPeer peer([&](Connection& connection) { received = connection.ReadToEnd(); });
    WriteSettings(peer);
    const Delivery delivery = Deliver(L"MESSAGE", std::wstring(70'000, L'x').c_str());
    EXPECT_EQ(delivery.result, 0);
    EXPECT_EQ(delivery.text, L"Error sending message to CMS client:\nMessage is too long.");
    peer.Stop();
    EXPECT_EQ(received, "");
}

TEST_F(Notification, ReportsAFailedStartUp) {
    TcpPlatform platform;
    platform.startUp = [](WORD, LPWSADATA) -> int { return WSASYSNOTREADY; };
    platform.showBox = [](HWND, LPCWSTR, LPCWSTR, UINT) -> int { return IDOK; };
    TcpMessageClient client(platform);
    g_client = &client;
    WriteSettings("[CMS]\r\nPort=80\r\n");
    const Delivery delivery = Deliver();
    g_client = &m_client;
    EXPECT_EQ(delivery.result, 0);
    EXPECT_EQ(delivery.text, L"Error connecting to CMS client:\nCan't initialize Windows Sockets");
}

TEST_F(Notification, DisconnectsAfterAnAnswerThatIsNone) {
    std::string rest = "never";
    LoopbackPeer peer([&](Connection& connection) {
        connection.ReadFrame();
        connection.Send("no frame");
        rest = connection.ReadToEnd();
    });
    WriteSettings(peer);
    EXPECT_EQ(Deliver().result, 0);
    peer.Stop();
    EXPECT_EQ(rest, "");
}

// ---- handles ----

// Counts the valid ones; the platform's own counter is not everywhere to be had.
int OpenHandles() {
    int count = 0;
    for (ULONG number = 4; number < 0x8000; number += 4) {
        DWORD flags = 0;
        count += GetHandleInformation(UlongToHandle(number), &flags) != FALSE;
    }
    return count;
}

TEST_F(Notification, LeavesNoHandleOpenInAThousandExchanges) {
    LoopbackPeer peer([](Connection& connection) {
        connection.ReadFrame();
        connection.Send(Framed("TOOL_RESPONSE_MESSAGE|OK"));
        connection.ReadToEnd();
    });
    WriteSettings(peer);
    ASSERT_EQ(Deliver().result, 1); // what the platform keeps from the first use
    // The peer, which is in this process, has closed its ends then.
    const auto openAfter = [&peer](int exchanges) {
        while (peer.Served() < exchanges)
            Sleep(1);
        return OpenHandles();
    };
    const int before = openAfter(1);
    for (int i = 0; i < 1000; ++i)
        ASSERT_EQ(Deliver().result, 1);
    EXPECT_EQ(openAfter(1001), before);
}

TEST_F(Notification, LeavesNoHandleOpenWhenItIsRefused) {
    const Winsock winsock;
    WriteSettings("[CMS]\r\nPort=" + std::to_string(RefusingPort()) + "\r\n");
    ASSERT_EQ(Deliver().result, 0);
    const int before = OpenHandles();
    for (int i = 0; i < 20; ++i)
        ASSERT_EQ(Deliver().result, 0);
    EXPECT_EQ(OpenHandles(), before);
}

} // namespace
