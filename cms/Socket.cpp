#include "cms/Socket.h"

#include <algorithm>
#include <utility>

namespace zt {
namespace {

timeval ToTimeval(Milliseconds patience) {
    using namespace std::chrono;
    const Milliseconds wait = std::max(patience, Milliseconds::zero());
    const auto whole = duration_cast<seconds>(wait);
    const auto rest = duration_cast<microseconds>(wait - whole);
    return {static_cast<long>(whole.count()), static_cast<long>(rest.count())};
}

fd_set SetOf(SOCKET socket) {
    fd_set set{};
    set.fd_count = 1;
    set.fd_array[0] = socket;
    return set;
}

} // namespace

Socket::Socket(Socket&& other) noexcept
    : m_handle(std::exchange(other.m_handle, INVALID_SOCKET)),
      m_isCreated(std::exchange(other.m_isCreated, false)) {}

Socket& Socket::operator=(Socket&& other) noexcept {
    if (this != &other) {
        Close();
        m_handle = std::exchange(other.m_handle, INVALID_SOCKET);
        m_isCreated = std::exchange(other.m_isCreated, false);
    }
    return *this;
}

void Socket::Close() {
    if (m_handle != INVALID_SOCKET)
        closesocket(std::exchange(m_handle, INVALID_SOCKET));
}

int WaitUntilReadable(SOCKET socket, Milliseconds patience) {
    fd_set readable = SetOf(socket);
    timeval wait = ToTimeval(patience);
    return select(0, &readable, nullptr, nullptr, &wait);
}

int WaitUntilWritable(SOCKET socket, Milliseconds patience) {
    fd_set writable = SetOf(socket);
    fd_set failed = SetOf(socket);
    timeval wait = ToTimeval(patience);
    const int result = select(0, nullptr, &writable, &failed, &wait);
    if (result <= 0 || writable.fd_count > 0)
        return std::min(result, 1);
    WSASetLastError(WSAECONNREFUSED);
    return SOCKET_ERROR;
}

} // namespace zt
