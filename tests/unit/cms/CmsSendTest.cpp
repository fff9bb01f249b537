// Sending of the message client.
#include "tests/support/LoopbackPeer.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace zt;
using namespace zt::test;
using namespace std::string_literals;
using testing::AllOf;
using testing::AnyOf;
using testing::ElementsAre;
using testing::Ge;
using testing::Le;

constexpr const wchar_t* NoConnection = L"Can't send data. No connection";

std::vector<int> g_pieces;

int WSAAPI RecordSend(SOCKET socket, const char* bytes, int count, int flags) {
    g_pieces.push_back(count);
    return send(socket, bytes, count, flags);
}
int g_room;

// Takes at most 700 bytes at once, and none when there is no room left.
int WSAAPI SendIntoRoom(SOCKET, const char*, int count, int) {
    const int now = std::min({count, 700, g_room});
    g_room -= now;
    if (now == 0)
        WSASetLastError(WSAENOBUFS);
    return now;
}

int g_refusals;

// Reports no room for the first calls.
int WSAAPI SendAfterRefusals(SOCKET socket, const char* bytes, int count, int flags) {
    if (g_refusals == 0)
        return send(socket, bytes, count, flags);
    --g_refusals;
    WSASetLastError(WSAEWOULDBLOCK);
    return SOCKET_ERROR;
}

// What arrives at a peer that reads to the end.
std::string Arriving(const std::wstring& message) {
    std::string bytes;
    Exchange exchange([&](Connection& connection) { bytes = connection.ReadToEnd(); });
    EXPECT_EQ(exchange.client.SendMessage(message), 1);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"");
    exchange.client.Disconnect();
    exchange.peer.Stop();
    return bytes;
}

TEST(TcpClientSend, EncodesTheMessageAsUtf8) {
    EXPECT_EQ(Arriving(L"\u00E4\u20AC\u65E5\U0001F600"),
              "\x00\x0F\xC3\xA4\xE2\x82\xAC\xE6\x97\xA5\xF0\x9F\x98\x80\x00"s);
}

TEST(TcpClientSend, ReplacesALoneSurrogate) {
    EXPECT_EQ(Arriving(std::wstring(1, static_cast<wchar_t>(0xD800))), "\x00\x06\xEF\xBF\xBD\x00"s);
}

TEST(TcpClientSend, CountsTheBytesAndNotTheCharacters) {
    // 32,763 characters of two bytes make 65,526 bytes.
    const std::wstring text(32763, L'\u00E4');
    EXPECT_EQ(Arriving(text + L"x").size(), 65530u);
    std::string bytes = "never";
    Exchange exchange([&](Connection& connection) { bytes = connection.ReadToEnd(); });
    EXPECT_EQ(exchange.client.SendMessage(text + L"xx"), 0);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"Message is too long.");
    exchange.client.Disconnect();
    exchange.peer.Stop();
    EXPECT_EQ(bytes, "");
}

TEST(TcpClientSend, RefusesAnEmptyMessage) {
    Exchange exchange([](Connection&) {});
    EXPECT_EQ(exchange.client.SendMessage(L""), 0);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"Can't send empty message");
}

TEST(TcpClientSend, NeedsAConnectionBeforeAMessage) {
    TcpMessageClient client;
    EXPECT_EQ(client.SendMessage(L""), 0);
    EXPECT_EQ(client.GetLastErrorText(), NoConnection);
}

TEST(TcpClientSend, NeedsAConnectionForBytes) {
    TcpMessageClient client;
    EXPECT_EQ(client.SendData("AB", 0), 0);
    EXPECT_EQ(client.GetLastErrorText(), NoConnection);
}

TEST(TcpClientSend, SucceedsAtOnceWithoutBytes) {
    std::string bytes = "never";
    Exchange exchange([&](Connection& connection) { bytes = connection.ReadToEnd(); });
    EXPECT_EQ(exchange.client.SendData("AB", 0), 1);
    EXPECT_EQ(exchange.client.SendData("AB", -1), 1);
    exchange.client.Disconnect();
    exchange.peer.Stop();
    EXPECT_EQ(bytes, "");
}

TEST(TcpClientSend, GoesInPiecesOf1024Bytes) {
    g_pieces.clear();
    TcpPlatform platform;
    platform.send = RecordSend;
    std::string bytes;
    std::string sent(2500, '\0');
    for (std::size_t i = 0; i < sent.size(); ++i)
        sent[i] = static_cast<char>(i * 7);
    Exchange exchange([&](Connection& connection) { bytes = connection.ReadToEnd(); }, platform);
    EXPECT_EQ(exchange.client.SendData(sent.data(), 2500), 1);
    exchange.client.Disconnect();
    exchange.peer.Stop();
    EXPECT_THAT(g_pieces, ElementsAre(1024, 1024, 452));
    EXPECT_EQ(bytes, sent);
}

TEST(TcpClientSend, TriesAPieceAgainOnceThereIsRoom) {
    g_refusals = 3;
    TcpPlatform platform;
    platform.send = SendAfterRefusals;
    std::string bytes;
    Exchange exchange([&](Connection& connection) { bytes = connection.ReadToEnd(); }, platform);
    EXPECT_EQ(exchange.client.SendData("abc", 3), 1);
    EXPECT_EQ(g_refusals, 0);
    exchange.client.Disconnect();
    exchange.peer.Stop();
    EXPECT_EQ(bytes, "abc");
}

TEST(TcpClientSend, ReportsTheErrorAndTheBytesSentBeforeIt) {
    TcpPlatform platform;
    platform.send = SendIntoRoom;
    g_room = 1500;
    Exchange exchange([](Connection&) {}, platform);
    EXPECT_EQ(exchange.client.SendData(std::string(3000, 'x').data(), 3000), 0);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"Error sending data: 10055. Error code: 1500");
}

TEST(TcpClientSend, FailsWhenThePeerHasReset) {
    Exchange exchange([](Connection& connection) { connection.Reset(); });
    exchange.peer.Stop();
    const std::string bytes(100'000, 'x');
    EXPECT_EQ(exchange.client.SendData(bytes.data(), 100'000), 0);
    EXPECT_THAT(exchange.client.GetLastErrorText(),
                AnyOf(L"Error sending data: 10053. Error code: 0",
                      L"Error sending data: 10054. Error code: 0"));
}

TEST(TcpClientSend, EndsWithTheTimeoutWhenThePeerTakesNothing) {
    std::atomic<bool> isDone = false;
    Exchange exchange([&](Connection&) {
        while (!isDone)
            Sleep(10);
    });
    exchange.client.SetTimeout(1);
    const std::vector<char> bytes(64'000'000);
    const ULONGLONG begin = GetTickCount64();
    const int result = exchange.client.SendData(bytes.data(), 64'000'000);
    EXPECT_THAT(GetTickCount64() - begin, AllOf(Ge(900u), Le(15000u)));
    isDone = true;
    EXPECT_EQ(result, 0);
    EXPECT_THAT(exchange.client.GetLastErrorText(),
                testing::StartsWith(L"Error sending data: 10060. Error code: "));
}

} // namespace
