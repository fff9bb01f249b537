#include "cms/TcpMessageClient.h"

#include "cms/Protocol.h"
#include "support/Encoding.h"

#include <ws2tcpip.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace zt {
namespace {

constexpr int Succeeded = 1;
constexpr int Failed = 0;
constexpr int StagingSize = 1024;
constexpr int AnswerCapacity = 65536;
constexpr const wchar_t* NoConnection = L"Can't send data. No connection";

using Staging = std::array<char, StagingSize>;

std::wstring LastPlatformError() {
    return std::to_wstring(WSAGetLastError());
}

// The first IPv4 address of the host.
std::optional<in_addr> Resolve(const std::wstring& host) {
    addrinfo wanted{};
    wanted.ai_family = AF_INET;
    wanted.ai_socktype = SOCK_STREAM;
    addrinfo* found = nullptr;
    if (getaddrinfo(ToThreadAnsi(host).c_str(), nullptr, &wanted, &found) != 0)
        return std::nullopt;
    const std::unique_ptr<addrinfo, decltype(&freeaddrinfo)> owner(found, freeaddrinfo);
    return reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr;
}

Milliseconds Until(std::chrono::steady_clock::time_point time) {
    return std::chrono::ceil<Milliseconds>(time - std::chrono::steady_clock::now());
}

} // namespace

TcpMessageClient::TcpMessageClient(const TcpPlatform& platform) : m_platform(platform) {
    if (Startup())
        return;
    Cleanup();
    m_platform.showBox(nullptr, m_lastError.c_str(), L"CMS_TC", MB_OK | MB_ICONERROR);
}

TcpMessageClient::~TcpMessageClient() {
    Cleanup();
}

bool TcpMessageClient::Startup() {
    if (m_isStarted)
        return true;
    WSADATA data{};
    m_isStarted = m_platform.startUp(MAKEWORD(2, 0), &data) == 0;
    if (!m_isStarted)
        m_lastError = L"Can't initialize Windows Sockets";
    return m_isStarted;
}

bool TcpMessageClient::Cleanup() {
    if (!m_isStarted)
        return false;
    m_socket.Close();
    m_isStarted = false;
    return m_platform.cleanUp() == 0;
}

void TcpMessageClient::SetTimeout(std::int32_t seconds) {
    m_timeout = seconds;
}

int TcpMessageClient::Connect(const std::wstring& host, std::uint16_t port) {
    if (!m_isStarted)
        return Failed;
    const std::optional<in_addr> hostAddress = Resolve(host);
    if (!hostAddress)
        return FailSend(L"Can't resolve host name: " + host);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr = *hostAddress;
    address.sin_port = htons(port);
    m_socket = Socket(m_platform.createSocket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    if (!m_socket.IsCreated())
        return FailSend(L"Can't create socket");
    if (!ConnectSocket(address))
        return FailSend(L"Can't connect to port " + std::to_wstring(port));
    return Succeeded;
}

// The socket does not block, so that every wait on it can have an end.
bool TcpMessageClient::ConnectSocket(const sockaddr_in& address) {
    u_long isNonBlocking = 1;
    if (m_platform.control(m_socket.Get(), FIONBIO, &isNonBlocking) != 0)
        return false;
    const auto* peer = reinterpret_cast<const sockaddr*>(&address);
    if (connect(m_socket.Get(), peer, sizeof address) == 0)
        return true;
    return WSAGetLastError() == WSAEWOULDBLOCK &&
           WaitUntilWritable(m_socket.Get(), Until(GiveUpTime())) == 1;
}

void TcpMessageClient::Disconnect() {
    if (m_isStarted)
        m_socket.Close();
}

int TcpMessageClient::SendMessage(const std::wstring& message) {
    if (!m_isStarted)
        return Failed;
    if (!m_socket.IsCreated())
        return FailSend(NoConnection);
    if (message.empty())
        return FailSend(L"Can't send empty message");
    const std::optional<std::string> frame = BuildFrame(ToUtf8(message));
    if (!frame)
        return FailSend(L"Message is too long.");
    return SendData(frame->data(), static_cast<int>(frame->size()));
}

int TcpMessageClient::SendData(const char* bytes, int count) {
    if (!m_isStarted)
        return Failed;
    if (!m_socket.IsCreated())
        return FailSend(NoConnection);
    const Clock::time_point giveUp = GiveUpTime();
    Staging staging;
    int sent = 0;
    while (sent < count) {
        const int piece = std::min(count - sent, StagingSize);
        std::copy_n(bytes + sent, piece, staging.data());
        const int result = SendPiece(staging.data(), piece, giveUp);
        if (result < 1)
            return FailSend(L"Error sending data: " + LastPlatformError() + L". Error code: " +
                            std::to_wstring(sent));
        sent += result;
    }
    return Succeeded;
}

// A peer that takes nothing fails the piece with WSAETIMEDOUT.
int TcpMessageClient::SendPiece(const char* bytes, int count, Clock::time_point giveUp) {
    while (true) {
        const int result = m_platform.send(m_socket.Get(), bytes, count, 0);
        if (result != SOCKET_ERROR || WSAGetLastError() != WSAEWOULDBLOCK)
            return result;
        const int ready = WaitUntilWritable(m_socket.Get(), Until(giveUp));
        if (ready == 1)
            continue;
        if (ready == 0)
            WSASetLastError(WSAETIMEDOUT);
        return SOCKET_ERROR;
    }
}

ReceiveResult TcpMessageClient::ReceiveMessage(std::wstring& message) {
    message.clear();
    if (!m_isStarted)
        return ReceiveFailed;
    if (!m_socket.IsCreated())
        return FailReceive(NoConnection);
    std::vector<char> answer(AnswerCapacity);
    int received = 0;
    const ReceiveResult result = ReceiveData(answer.data(), AnswerCapacity, received);
    if (result != Received)
        return result;
    // An answer that did not fit is too long for its length field, too.
    const int kept = std::min(received, AnswerCapacity);
    const auto text = TextInFrame({answer.data(), static_cast<std::size_t>(kept)});
    if (!text)
        return FailReceive(L"Invalid response received from server");
    message = FromUtf8(*text);
    return Received;
}

ReceiveResult TcpMessageClient::ReceiveData(char* buffer, int capacity, int& received) {
    received = 0;
    if (!m_isStarted)
        return ReceiveFailed;
    if (!m_socket.IsCreated())
        return FailReceive(NoConnection);
    const int ready = m_platform.waitUntilReadable(m_socket.Get(), std::chrono::seconds(m_timeout));
    if (ready == 0) {
        m_lastError = L"Timeout occured while waiting for response from server";
        return ReceiveTimedOut;
    }
    if (ready < 0)
        return FailReceive(L"Unknown error. Error code: " + LastPlatformError());
    const Clock::time_point giveUp = GiveUpTime();
    const int most = std::max(capacity, static_cast<int>(MaximumFrameLength));
    int waiting = 0;
    do {
        // Asking for no bytes at the end of what waited, as a sign that the drain is over, is not
        // an empty read everywhere: some platforms wait for data then. So the count alone decides.
        if (!QueryWaiting(waiting) || !ReceiveWaiting(waiting, buffer, capacity, received))
            return FailReceive(L"Error receiving data. Error code: " + LastPlatformError());
    } while (waiting > 0 && received <= most && Clock::now() < giveUp);
    return Received;
}

bool TcpMessageClient::QueryWaiting(int& waiting) {
    u_long count = 0;
    if (m_platform.control(m_socket.Get(), FIONREAD, &count) != 0)
        return false;
    waiting = static_cast<int>(std::min<u_long>(count, INT_MAX));
    return true;
}

bool TcpMessageClient::ReceiveWaiting(int waiting, char* buffer, int capacity, int& received) {
    Staging staging;
    while (waiting > 0) {
        const int wanted = std::min(waiting, StagingSize);
        const int count = m_platform.receive(m_socket.Get(), staging.data(), wanted, 0);
        if (count <= 0)
            return count == 0;
        const int fitting = std::clamp(capacity - received, 0, count);
        std::copy_n(staging.data(), fitting, buffer + std::min(received, capacity));
        received += count;
        waiting -= count;
    }
    return true;
}

TcpMessageClient::Clock::time_point TcpMessageClient::GiveUpTime() const {
    return Clock::now() + std::chrono::seconds(std::max(m_timeout, std::int32_t{1}));
}

ReceiveResult TcpMessageClient::FailReceive(std::wstring text) {
    m_lastError = std::move(text);
    return ReceiveFailed;
}

int TcpMessageClient::FailSend(std::wstring text) {
    m_lastError = std::move(text);
    return Failed;
}

TcpMessageClient& SharedTcpMessageClient() {
    static TcpMessageClient client;
    return client;
}

} // namespace zt
