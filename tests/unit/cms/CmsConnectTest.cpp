// Start, end and connection of the message client.
#include "tests/support/LoopbackPeer.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using namespace zt;
using namespace zt::test;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::wstring_view ClosedSocketSend = L"Error sending data: 10038. Error code: 0";

// ---- start and end of Windows Sockets ----

struct Box {
    HWND owner;
    std::wstring text;
    std::wstring caption;
    UINT type;
};

std::vector<Box> g_boxes;
std::vector<WORD> g_startUps;
int g_cleanUps;

int WINAPI RecordBox(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type) {
    g_boxes.push_back({owner, text, caption, type});
    return IDOK;
}
int WSAAPI RecordStartUp(WORD version, LPWSADATA data) {
    g_startUps.push_back(version);
    return WSAStartup(version, data);
}
int WSAAPI RefuseStartUp(WORD version, LPWSADATA) {
    g_startUps.push_back(version);
    return WSASYSNOTREADY;
}
int WSAAPI RecordCleanUp() {
    ++g_cleanUps;
    return WSACleanup();
}
int WSAAPI FailCleanUp() {
    WSACleanup();
    return SOCKET_ERROR;
}
SOCKET WSAAPI RefuseSocket(int, int, int) {
    return INVALID_SOCKET;
}

class TcpClientStart : public testing::Test {
  protected:
    TcpClientStart() {
        g_boxes.clear();
        g_startUps.clear();
        g_cleanUps = 0;
    }

    static TcpPlatform Platform(decltype(&::WSAStartup) startUp) {
        TcpPlatform platform;
        platform.startUp = startUp;
        platform.cleanUp = RecordCleanUp;
        platform.showBox = RecordBox;
        return platform;
    }
};

TEST_F(TcpClientStart, AsksForWindowsSockets20AndShowsNothing) {
    const TcpMessageClient client(Platform(RecordStartUp));
    EXPECT_THAT(g_startUps, ElementsAre(MAKEWORD(2, 0)));
    EXPECT_THAT(g_boxes, IsEmpty());
    EXPECT_EQ(client.GetLastErrorText(), L"");
}

TEST_F(TcpClientStart, ShowsOneErrorBoxWhenItFails) {
    const TcpMessageClient client(Platform(RefuseStartUp));
    ASSERT_EQ(g_boxes.size(), 1u);
    EXPECT_EQ(g_boxes[0].owner, nullptr);
    EXPECT_EQ(g_boxes[0].text, L"Can't initialize Windows Sockets");
    EXPECT_EQ(g_boxes[0].caption, L"CMS_TC");
    EXPECT_EQ(g_boxes[0].type, static_cast<UINT>(MB_OK | MB_ICONERROR));
    EXPECT_EQ(client.GetLastErrorText(), L"Can't initialize Windows Sockets");
}

TEST_F(TcpClientStart, NeverEndsWhatItCouldNotStart) {
    {
        TcpMessageClient client(Platform(RefuseStartUp));
        EXPECT_FALSE(client.Cleanup());
    }
    EXPECT_EQ(g_cleanUps, 0);
}

TEST_F(TcpClientStart, LeavesEveryOperationFailingQuietlyWhenItFails) {
    TcpMessageClient client(Platform(RefuseStartUp));
    char buffer[8];
    int received = 7;
    std::wstring message = L"old";
    EXPECT_EQ(client.Connect(L"no-such-host.invalid", 80), 0);
    EXPECT_EQ(client.SendMessage(L"AB"), 0);
    EXPECT_EQ(client.SendMessage(L""), 0);
    EXPECT_EQ(client.SendData("AB", 2), 0);
    EXPECT_EQ(client.SendData("AB", 0), 0);
    EXPECT_EQ(client.ReceiveMessage(message), 2);
    EXPECT_EQ(client.ReceiveData(buffer, sizeof buffer, received), 2);
    client.Disconnect();
    EXPECT_EQ(message, L"");
    EXPECT_EQ(client.GetLastErrorText(), L"Can't initialize Windows Sockets");
    EXPECT_EQ(g_boxes.size(), 1u);
}

TEST_F(TcpClientStart, MaySucceedLater) {
    TcpMessageClient client(Platform(RecordStartUp));
    EXPECT_TRUE(client.Cleanup());
    EXPECT_EQ(client.Connect(L"localhost", 80), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"");
    EXPECT_TRUE(client.Startup());
    LoopbackPeer peer([](Connection&) {});
    EXPECT_EQ(client.Connect(L"localhost", peer.Port()), 1);
}

TEST_F(TcpClientStart, IsBalancedByOneEnd) {
    {
        TcpMessageClient client(Platform(RecordStartUp));
        EXPECT_TRUE(client.Startup());
    }
    EXPECT_EQ(g_startUps.size(), 1u);
    EXPECT_EQ(g_cleanUps, 1);
}

TEST_F(TcpClientStart, IsNotEndedTwice) {
    {
        TcpMessageClient client(Platform(RecordStartUp));
        EXPECT_TRUE(client.Cleanup());
        EXPECT_FALSE(client.Cleanup());
    }
    EXPECT_EQ(g_cleanUps, 1);
}

TEST_F(TcpClientStart, ReportsThatItsEndFailed) {
    TcpPlatform platform = Platform(RecordStartUp);
    platform.cleanUp = FailCleanUp;
    TcpMessageClient client(platform);
    EXPECT_FALSE(client.Cleanup());
}

TEST_F(TcpClientStart, ClosesTheConnectionWithItsEnd) {
    std::string read = "never";
    LoopbackPeer peer([&](Connection& connection) { read = connection.ReadToEnd(); });
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    EXPECT_TRUE(client.Cleanup());
    peer.Stop();
    EXPECT_EQ(read, "");
}

// ---- connecting ----

TEST(TcpClientConnect, ReachesThePortOnTheHost) {
    LoopbackPeer peer([](Connection&) {});
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    EXPECT_EQ(client.GetLastErrorText(), L"");
    peer.Stop();
    EXPECT_EQ(peer.Connections(), 1);
}

TEST(TcpClientConnect, TakesANumericAddress) {
    LoopbackPeer peer([](Connection&) {});
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"127.0.0.1", peer.Port()), 1);
}

TEST(TcpClientConnect, ReportsAHostWithoutAddress) {
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"no-such-host.invalid", 80), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't resolve host name: no-such-host.invalid");
    EXPECT_EQ(client.SendMessage(L"AB"), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't send data. No connection");
}

TEST(TcpClientConnect, ReportsAHostNameOutsideTheCodePageInFull) {
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"\u65E5\u672C.invalid", 80), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't resolve host name: \u65E5\u672C.invalid");
}

TEST(TcpClientConnect, ReportsAMissingSocket) {
    TcpPlatform platform;
    platform.createSocket = RefuseSocket;
    TcpMessageClient client(platform);
    EXPECT_EQ(client.Connect(L"localhost", 80), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't create socket");
    EXPECT_EQ(client.SendMessage(L"AB"), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't send data. No connection");
}

TEST(TcpClientConnect, ReportsTheRefusedPort) {
    const Winsock winsock;
    const std::uint16_t port = RefusingPort();
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"localhost", port), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't connect to port " + std::to_wstring(port));
}

TEST(TcpClientConnect, ReportsAPortAbove32767Unsigned) {
    TcpPlatform platform;
    platform.control = [](SOCKET, long, u_long*) -> int { return SOCKET_ERROR; };
    TcpMessageClient client(platform);
    EXPECT_EQ(client.Connect(L"localhost", 65535), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't connect to port 65535");
}

TEST(TcpClientConnect, KeepsTheSocketThatWasRefused) {
    const Winsock winsock;
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"localhost", RefusingPort()), 0);
    EXPECT_EQ(client.SendMessage(L"AB"), 0);
    EXPECT_THAT(client.GetLastErrorText(), StartsWith(L"Error sending data: "));
    EXPECT_THAT(client.GetLastErrorText(), EndsWith(L". Error code: 0"));
}

TEST(TcpClientConnect, ClosesTheConnectionOfBefore) {
    std::string read = "never";
    LoopbackPeer first([&](Connection& connection) { read = connection.ReadToEnd(); });
    LoopbackPeer second([](Connection&) {});
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", first.Port()), 1);
    ASSERT_EQ(client.Connect(L"localhost", second.Port()), 1);
    first.Stop();
    EXPECT_EQ(read, "");
}

TEST(TcpClientConnect, KeepsTheConnectionOfBeforeWhenTheHostHasNoAddress) {
    std::string read;
    LoopbackPeer peer([&](Connection& connection) { read = connection.ReadFrame(); });
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    EXPECT_EQ(client.Connect(L"no-such-host.invalid", 80), 0);
    EXPECT_EQ(client.SendMessage(L"AB"), 1);
    peer.Stop();
    EXPECT_EQ(read, std::string("\x00\x05\x41\x42\x00", 5));
}

TEST(TcpClientConnect, EndsWithTheTimeoutWhenTheQueueOfTheServerIsFull) {
    const Winsock winsock;
    std::uint16_t port = 0;
    const Socket listener = BoundSocket(0, port);
    std::vector<std::unique_ptr<TcpMessageClient>> clients;
    int result = 1;
    const ULONGLONG begin = GetTickCount64();
    for (int i = 0; i < 5 && result == 1; ++i) {
        clients.push_back(std::make_unique<TcpMessageClient>());
        clients.back()->SetTimeout(1);
        result = clients.back()->Connect(L"localhost", port);
    }
    EXPECT_EQ(result, 0);
    EXPECT_EQ(clients.back()->GetLastErrorText(),
              L"Can't connect to port " + std::to_wstring(port));
    EXPECT_LT(GetTickCount64() - begin, 20000u);
}

// ---- disconnecting ----

TEST(TcpClientDisconnect, ClosesTheConnection) {
    std::string read = "never";
    LoopbackPeer peer([&](Connection& connection) { read = connection.ReadToEnd(); });
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    client.Disconnect();
    peer.Stop();
    EXPECT_EQ(read, "");
    EXPECT_EQ(client.GetLastErrorText(), L"");
}

TEST(TcpClientDisconnect, LeavesAClosedSocketForSendingAndReceiving) {
    LoopbackPeer peer([](Connection&) {});
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    client.Disconnect();
    std::wstring message;
    EXPECT_EQ(client.SendMessage(L"AB"), 0);
    EXPECT_EQ(client.GetLastErrorText(), ClosedSocketSend);
    EXPECT_EQ(client.ReceiveMessage(message), 2);
    EXPECT_EQ(client.GetLastErrorText(), L"Unknown error. Error code: 10038");
}

TEST(TcpClientDisconnect, WithoutAConnectionDoesNothing) {
    TcpMessageClient client;
    client.Disconnect();
    EXPECT_EQ(client.SendMessage(L"AB"), 0);
    EXPECT_EQ(client.GetLastErrorText(), L"Can't send data. No connection");
}

TEST(TcpClientDisconnect, NeverClosesASocketThatGotTheNumberOfItsOwn) {
    const Winsock winsock;
    LoopbackPeer peer([](Connection&) {});
    std::vector<Socket> others;
    {
        TcpMessageClient client;
        ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
        client.Disconnect();
        std::uint16_t port = 0;
        for (int i = 0; i < 20; ++i)
            others.push_back(BoundSocket(-1, port));
        client.Disconnect();
        EXPECT_EQ(client.SendMessage(L"AB"), 0);
        EXPECT_EQ(client.Connect(L"localhost", RefusingPort()), 0);
    }
    for (const Socket& other : others) {
        sockaddr_in address{};
        int size = sizeof address;
        EXPECT_EQ(getsockname(other.Get(), reinterpret_cast<sockaddr*>(&address), &size), 0);
    }
}

TEST(TcpClientDisconnect, AllowsAnotherConnection) {
    LoopbackPeer peer([](Connection& connection) { connection.ReadToEnd(); });
    TcpMessageClient client;
    for (int i = 0; i < 2; ++i) {
        EXPECT_EQ(client.Connect(L"localhost", peer.Port()), 1);
        client.Disconnect();
    }
    peer.Stop();
    EXPECT_EQ(peer.Connections(), 2);
}

TEST(SharedTcpClient, IsOneForAllCallers) {
    EXPECT_EQ(&SharedTcpMessageClient(), &SharedTcpMessageClient());
    EXPECT_EQ(SharedTcpMessageClient().GetLastErrorText(), L"");
}

TEST(SharedTcpClient, IsMadeOnceWhenManyThreadsAskFirst) {
    std::vector<std::thread> threads;
    std::atomic<TcpMessageClient*> clients[8] = {};
    for (auto& client : clients)
        threads.emplace_back([&client] { client = &SharedTcpMessageClient(); });
    for (std::thread& thread : threads)
        thread.join();
    for (auto& client : clients)
        EXPECT_EQ(client, &SharedTcpMessageClient());
}

TEST(TcpClientConnect, DoesNotReachAnotherAddressOfTheMachine) {
    LoopbackPeer peer([](Connection&) {});
    TcpMessageClient client;
    EXPECT_EQ(client.Connect(L"127.0.0.2", peer.Port()), 0);
}

} // namespace
