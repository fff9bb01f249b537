// One socket of the platform and the waits on it.
#pragma once

#include <winsock2.h>
#include <windows.h>

#include <chrono>

namespace zt {

// Owns a socket. What was closed still counts as created, but its handle is never handed to the
// platform again: the number may stand for another handle of the process by then. Calls on a closed
// socket get INVALID_SOCKET, and so fail with WSAENOTSOCK, as they do on a closed handle.
class Socket {
  public:
    Socket() = default;
    explicit Socket(SOCKET handle) : m_handle(handle), m_isCreated(handle != INVALID_SOCKET) {}
    ~Socket() { Close(); }
    // The socket held before is closed; other holds nothing afterwards.
    Socket(Socket&& other) noexcept;
    Socket& operator=(Socket&& other) noexcept;

    bool IsCreated() const { return m_isCreated; }
    SOCKET Get() const { return m_handle; }
    void Close();

  private:
    SOCKET m_handle = INVALID_SOCKET;
    bool m_isCreated = false;
};

using Milliseconds = std::chrono::milliseconds;

// Wait for at most patience (none when it is negative); 1 when the socket is ready, 0 when it is
// not in time, SOCKET_ERROR with the reason in WSAGetLastError when the wait failed.
int WaitUntilReadable(SOCKET socket, Milliseconds patience);
// A connection that cannot be made fails with WSAECONNREFUSED, whatever stood against it.
int WaitUntilWritable(SOCKET socket, Milliseconds patience);

} // namespace zt
