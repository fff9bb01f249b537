// A request and its answer over one TCP connection.
#pragma once

#include "cms/Socket.h"

#include <winsock2.h>
#include <windows.h>
// The method of this name would be renamed in the files that include <windows.h>, and in no others.
#undef SendMessage

#include <cstdint>
#include <string>

namespace zt {

// The platform's calls whose arguments no peer can see or whose failures none can provoke; tests
// replace them.
struct TcpPlatform {
    decltype(&::WSAStartup) startUp = ::WSAStartup;
    decltype(&::WSACleanup) cleanUp = ::WSACleanup;
    decltype(&::MessageBoxW) showBox = ::MessageBoxW;
    decltype(&::socket) createSocket = ::socket;
    decltype(&::ioctlsocket) control = ::ioctlsocket;
    decltype(&::send) send = ::send;
    decltype(&::recv) receive = ::recv;
    decltype(&zt::WaitUntilReadable) waitUntilReadable = zt::WaitUntilReadable;
};

// What the receiving operations return.
enum ReceiveResult : int { Received = 0, ReceiveTimedOut = 1, ReceiveFailed = 2 };

// Connect, SendMessage, ReceiveMessage and Disconnect make one exchange. Connecting and sending
// return 1 for success and 0 for failure; a failure leaves its text in the last error, but for
// operations on a client whose start-up failed: those fail and leave it as it is.
//
// No peer can hold the client for ever. Beside the wait for the first byte of an answer, which
// takes the time-out at most, each operation ends when it has taken the time-out, or one second
// when that is longer.
class TcpMessageClient {
  public:
    // Starts Windows Sockets; a message box reports it when that fails.
    explicit TcpMessageClient(const TcpPlatform& platform = {});
    ~TcpMessageClient();
    TcpMessageClient(const TcpMessageClient&) = delete;
    TcpMessageClient& operator=(const TcpMessageClient&) = delete;

    // Does nothing, successfully, when Windows Sockets are started already.
    bool Startup();
    // Closes the socket and ends Windows Sockets; false when they were not started or their end
    // fails. Either way they do not count as started afterwards.
    bool Cleanup();

    // Seconds; 60 at first. A negative number waits as little as 0.
    void SetTimeout(std::int32_t seconds);

    // The new socket replaces the one of before, which is closed if it is still open. A socket that
    // did not connect is kept, like one that did, until the next call or the client's end.
    int Connect(const std::wstring& host, std::uint16_t port);

    // Closes the socket. The client still counts as having one, so sending and receiving then
    // report the platform's error for a closed socket and not a missing connection.
    void Disconnect();

    int SendMessage(const std::wstring& message);
    int SendData(const char* bytes, int count);

    // message is empty after any failure.
    ReceiveResult ReceiveMessage(std::wstring& message);

    // Takes what has arrived by the time that nothing is waiting any more. received counts all
    // bytes that came, also those beyond capacity, which are dropped. More than any frame can hold
    // is not waited for, so a peer that never stops sending is abandoned.
    ReceiveResult ReceiveData(char* buffer, int capacity, int& received);

    // Empty until a failure.
    std::wstring GetLastErrorText() const { return m_lastError; }

  private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point GiveUpTime() const;
    bool ConnectSocket(const sockaddr_in& address);
    int SendPiece(const char* bytes, int count, Clock::time_point giveUp);
    // The number of bytes waiting; false when it cannot be determined.
    bool QueryWaiting(int& waiting);
    bool ReceiveWaiting(int waiting, char* buffer, int capacity, int& received);
    ReceiveResult FailReceive(std::wstring text);
    int FailSend(std::wstring text);

    TcpPlatform m_platform;
    bool m_isStarted = false;
    std::wstring m_lastError;
    Socket m_socket;
    std::int32_t m_timeout = 60;
};

// The one client of the program, made on first use and destroyed when the process ends. Only the
// making is guarded against other threads.
TcpMessageClient& SharedTcpMessageClient();

} // namespace zt
