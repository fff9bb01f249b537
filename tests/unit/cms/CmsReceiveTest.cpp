// Receiving of the message client.
#include "tests/support/LoopbackPeer.h"

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

namespace {

using namespace zt;
using namespace zt::test;
using namespace std::string_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::Le;

constexpr const wchar_t* NoConnection = L"Can't send data. No connection";
constexpr const wchar_t* InvalidResponse = L"Invalid response received from server";

std::vector<int> g_pieces;
std::vector<Milliseconds> g_waits;

int WSAAPI RecordReceive(SOCKET socket, char* buffer, int count, int flags) {
    g_pieces.push_back(count);
    return recv(socket, buffer, count, flags);
}
int WSAAPI FailReceive(SOCKET, char*, int, int) {
    WSASetLastError(WSAECONNABORTED);
    return SOCKET_ERROR;
}
int WSAAPI FailQuery(SOCKET socket, long command, u_long* value) {
    if (command != FIONREAD)
        return ioctlsocket(socket, command, value);
    WSASetLastError(WSAENETDOWN);
    return SOCKET_ERROR;
}
int RecordWait(SOCKET, Milliseconds patience) {
    g_waits.push_back(patience);
    return 0;
}
int FailWait(SOCKET, Milliseconds) {
    WSASetLastError(WSAENETDOWN);
    return SOCKET_ERROR;
}

ULONGLONG MillisecondsOf(const std::function<void()>& action) {
    const ULONGLONG begin = GetTickCount64();
    action();
    return GetTickCount64() - begin;
}

// ---- receiving messages ----

struct Answer {
    const char* name;
    std::string bytes;
    ReceiveResult result;
    std::wstring message;
};

class TcpClientAnswer : public testing::TestWithParam<Answer> {};

// The peer sends all and then closes, so that no answer is taken before it is whole.
TEST_P(TcpClientAnswer, IsTakenOrRefused) {
    LoopbackPeer peer([](Connection& connection) { connection.Send(GetParam().bytes); });
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    peer.Stop();
    std::wstring message = L"old";
    EXPECT_EQ(client.ReceiveMessage(message), GetParam().result);
    EXPECT_EQ(message, GetParam().message);
    EXPECT_EQ(client.GetLastErrorText(), GetParam().result == 0 ? L"" : InvalidResponse);
}

std::string LongAnswer(std::size_t size, const std::string& length) {
    return length + std::string(size - 3, 'x') + '\0';
}

INSTANTIATE_TEST_SUITE_P(
    Cms, TcpClientAnswer,
    testing::Values(
        Answer{"Utf8", "\x00\x0F\xC3\xA4\xE2\x82\xAC\xE6\x97\xA5\xF0\x9F\x98\x80\x00"s, Received,
               L"\u00E4\u20AC\u65E5\U0001F600"},
        Answer{"Utf8SequenceCutInTwo", "\x00\x06\x41\xE2\x82\x00"s, Received, L"A\uFFFD"},
        Answer{"NoUtf8", "\x00\x06\x41\xFF\x42\x00"s, Received, L"A\uFFFD\x42"},
        Answer{"Longest", LongAnswer(65535, "\xFF\xFF"), Received, std::wstring(65532, L'x')},
        Answer{"NoClosingZero", "\x00\x05\x41\x42\x43"s, ReceiveFailed, L""},
        Answer{"OneByteMoreThanFits", LongAnswer(65537, "\xFF\xFF"), ReceiveFailed, L""},
        // A length that only the lower 16 bits of the count agree with.
        Answer{"SixteenBitsTooLong", LongAnswer(65541, "\x00\x05"s), ReceiveFailed, L""}),
    [](const auto& testCase) { return testCase.param.name; });

TEST(TcpClientReceive, AnswersAfterTheMessageArrived) {
    Exchange exchange([](Connection& connection) {
        if (connection.ReadFrame() == "\x00\x05\x41\x42\x00"s)
            connection.Send("\x00\x05OK\x00"s);
        connection.ReadToEnd();
    });
    std::wstring message;
    EXPECT_EQ(exchange.client.SendMessage(L"AB"), 1);
    EXPECT_EQ(exchange.client.ReceiveMessage(message), 0);
    EXPECT_EQ(message, L"OK");
    exchange.client.Disconnect();
}

TEST(TcpClientReceive, NeedsAConnection) {
    TcpMessageClient client;
    std::wstring message = L"old";
    char buffer[8];
    int received = 7;
    EXPECT_EQ(client.ReceiveMessage(message), 2);
    EXPECT_EQ(client.GetLastErrorText(), NoConnection);
    EXPECT_EQ(message, L"");
    EXPECT_EQ(client.ReceiveData(buffer, sizeof buffer, received), 2);
    EXPECT_EQ(client.GetLastErrorText(), NoConnection);
}

TEST(TcpClientReceive, TimesOutWhenNothingComes) {
    Exchange exchange([](Connection& connection) { connection.ReadToEnd(); });
    exchange.client.SetTimeout(1);
    std::wstring message = L"old";
    ReceiveResult result = Received;
    EXPECT_THAT(MillisecondsOf([&] { result = exchange.client.ReceiveMessage(message); }),
                AllOf(Ge(900u), Le(15000u)));
    EXPECT_EQ(result, 1);
    EXPECT_EQ(message, L"");
    EXPECT_EQ(exchange.client.GetLastErrorText(),
              L"Timeout occured while waiting for response from server");
    exchange.client.Disconnect();
}

class TcpClientPoll : public testing::TestWithParam<int> {};

TEST_P(TcpClientPoll, TimesOutAtOnceWhenNothingIsThere) {
    Exchange exchange([](Connection& connection) { connection.ReadToEnd(); });
    exchange.client.SetTimeout(GetParam());
    std::wstring message;
    EXPECT_LT(MillisecondsOf([&] { EXPECT_EQ(exchange.client.ReceiveMessage(message), 1); }),
              5000u);
    exchange.client.Disconnect();
}

TEST_P(TcpClientPoll, TakesWhatIsThere) {
    LoopbackPeer peer([](Connection& connection) { connection.Send("\x00\x05\x41\x42\x00"s); });
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    peer.Stop();
    client.SetTimeout(GetParam());
    std::wstring message;
    EXPECT_EQ(client.ReceiveMessage(message), 0);
    EXPECT_EQ(message, L"AB");
}

INSTANTIATE_TEST_SUITE_P(Cms, TcpClientPoll, testing::Values(0, -1, INT32_MIN));

TEST(TcpClientReceive, Waits60SecondsByDefault) {
    g_waits.clear();
    TcpPlatform platform;
    platform.waitUntilReadable = RecordWait;
    LoopbackPeer peer([](Connection&) {});
    TcpMessageClient client(platform);
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    std::wstring message;
    EXPECT_EQ(client.ReceiveMessage(message), 1);
    client.SetTimeout(INT32_MAX);
    EXPECT_EQ(client.ReceiveMessage(message), 1);
    EXPECT_THAT(g_waits, ElementsAre(Milliseconds(60'000), Milliseconds(2'147'483'647'000)));
}

TEST(TcpClientReceive, ReportsAFailedWait) {
    TcpPlatform platform;
    platform.waitUntilReadable = FailWait;
    Exchange exchange([](Connection&) {}, platform);
    std::wstring message;
    EXPECT_EQ(exchange.client.ReceiveMessage(message), 2);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"Unknown error. Error code: 10050");
}

TEST(TcpClientReceive, ReportsAFailedRead) {
    TcpPlatform platform;
    platform.receive = FailReceive;
    Exchange exchange([](Connection& connection) { connection.Send("A"); }, platform);
    std::wstring message;
    EXPECT_EQ(exchange.client.ReceiveMessage(message), 2);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"Error receiving data. Error code: 10053");
}

TEST(TcpClientReceive, ReportsAFailedQuery) {
    TcpPlatform platform;
    platform.control = FailQuery;
    Exchange exchange([](Connection& connection) { connection.Send("A"); }, platform);
    std::wstring message;
    EXPECT_EQ(exchange.client.ReceiveMessage(message), 2);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"Error receiving data. Error code: 10050");
}

TEST(TcpClientReceive, FindsNoAnswerWhereThePeerClosed) {
    Exchange exchange([](Connection& connection) { connection.Close(); });
    std::wstring message;
    EXPECT_LT(MillisecondsOf([&] { EXPECT_EQ(exchange.client.ReceiveMessage(message), 2); }),
              9000u);
    EXPECT_EQ(exchange.client.GetLastErrorText(), InvalidResponse);
}

TEST(TcpClientReceive, TakesNoAnswerFromAPeerThatResetInTheMiddle) {
    Exchange exchange([](Connection& connection) {
        connection.Send("\x00\x05\x41"s);
        connection.Reset();
    });
    exchange.peer.Stop();
    std::wstring message;
    EXPECT_EQ(exchange.client.ReceiveMessage(message), 2);
    EXPECT_EQ(message, L"");
}

TEST(TcpClientReceive, DoesNotWaitForTheRestOfAnAnswer) {
    Exchange exchange([](Connection& connection) {
        connection.Send("\0"s);
        connection.ReadToEnd();
    });
    exchange.client.SetTimeout(60);
    std::wstring message;
    EXPECT_LT(MillisecondsOf([&] { EXPECT_EQ(exchange.client.ReceiveMessage(message), 2); }),
              30000u);
    EXPECT_EQ(exchange.client.GetLastErrorText(), InvalidResponse);
    exchange.client.Disconnect();
}

TEST(TcpClientReceive, AbandonsAPeerThatNeverStopsSending) {
    Exchange exchange([](Connection& connection) {
        while (connection.Send(std::string(100'000, 'x'))) {
        }
    });
    std::wstring message;
    EXPECT_LT(MillisecondsOf([&] { EXPECT_EQ(exchange.client.ReceiveMessage(message), 2); }),
              15000u);
    EXPECT_EQ(exchange.client.GetLastErrorText(), InvalidResponse);
    exchange.client.Disconnect();
}

TEST(TcpClientReceive, AbandonsAPeerThatSendsSingleBytesWithoutEnd) {
    Exchange exchange([](Connection& connection) {
        while (connection.Send("x")) {
        }
    });
    std::wstring message;
    EXPECT_LT(MillisecondsOf([&] { EXPECT_EQ(exchange.client.ReceiveMessage(message), 2); }),
              15000u);
    EXPECT_EQ(exchange.client.GetLastErrorText(), InvalidResponse);
    exchange.client.Disconnect();
}

// ---- receiving bytes ----

TEST(TcpClientBytes, ComeInPiecesOfAtMost1024AndAreNeverAskedForWhenNoneWait) {
    g_pieces.clear();
    TcpPlatform platform;
    platform.receive = RecordReceive;
    LoopbackPeer peer([](Connection& connection) { connection.Send(std::string(2500, 'x')); });
    TcpMessageClient client(platform);
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    peer.Stop();
    std::vector<char> buffer(4000, '-');
    int received = 0;
    EXPECT_EQ(client.ReceiveData(buffer.data(), 4000, received), 0);
    EXPECT_EQ(received, 2500);
    EXPECT_EQ(std::string(buffer.data(), 2501), std::string(2500, 'x') + '-');
    EXPECT_THAT(g_pieces, ElementsAre(1024, 1024, 452));
}

TEST(TcpClientBytes, BeyondTheCapacityAreCountedButDropped) {
    LoopbackPeer peer([](Connection& connection) { connection.Send(std::string(3000, 'x')); });
    TcpMessageClient client;
    ASSERT_EQ(client.Connect(L"localhost", peer.Port()), 1);
    peer.Stop();
    std::vector<char> buffer(4000, '-');
    int received = 0;
    EXPECT_EQ(client.ReceiveData(buffer.data(), 1500, received), 0);
    EXPECT_EQ(received, 3000);
    EXPECT_EQ(std::string(buffer.data(), 1501), std::string(1500, 'x') + '-');
}

TEST(TcpClientBytes, AreNoneWhereThePeerClosed) {
    Exchange exchange([](Connection& connection) { connection.Close(); });
    char buffer[8];
    int received = 7;
    EXPECT_EQ(exchange.client.ReceiveData(buffer, sizeof buffer, received), 0);
    EXPECT_EQ(received, 0);
    EXPECT_EQ(exchange.client.GetLastErrorText(), L"");
}

} // namespace
