#include "tests/support/LoopbackPeer.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>

namespace zt::test {
namespace {

constexpr Milliseconds Patience{10'000};
constexpr Milliseconds Poll{20};

} // namespace

Winsock::Winsock() {
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0)
        throw std::runtime_error("no Winsock");
}

std::string Connection::Read(std::size_t size) {
    std::string bytes;
    std::array<char, 4096> part{};
    while (bytes.size() < size) {
        if (WaitUntilReadable(m_socket.Get(), Patience) != 1)
            return bytes + "<silence>";
        const std::size_t wanted = std::min(size - bytes.size(), part.size());
        const int count = recv(m_socket.Get(), part.data(), static_cast<int>(wanted), 0);
        if (count <= 0)
            break;
        bytes.append(part.data(), static_cast<std::size_t>(count));
    }
    return bytes;
}

std::string Connection::ReadFrame() {
    std::string frame = Read(2);
    if (frame.size() < 2)
        return frame;
    const auto high = static_cast<unsigned char>(frame[0]);
    const auto low = static_cast<unsigned char>(frame[1]);
    return frame + Read(static_cast<std::size_t>(high * 256 + low - 2));
}

bool Connection::Send(std::string_view bytes) {
    while (!bytes.empty()) {
        const int count = send(m_socket.Get(), bytes.data(), static_cast<int>(bytes.size()), 0);
        if (count <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
}

void Connection::Reset() {
    const linger noLinger{1, 0};
    setsockopt(m_socket.Get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&noLinger),
               sizeof noLinger);
    m_socket.Close();
}

LoopbackPeer::LoopbackPeer(Behaviour behaviour)
    : m_behaviour(std::move(behaviour)), m_listener(BoundSocket(SOMAXCONN, m_port)),
      m_thread([this] { Serve(); }) {}

void LoopbackPeer::Stop() {
    m_isStopping = true;
    if (m_thread.joinable())
        m_thread.join();
}

void LoopbackPeer::Serve() {
    while (true) {
        const bool wasStopping = m_isStopping;
        if (WaitUntilReadable(m_listener.Get(), wasStopping ? Milliseconds{0} : Poll) == 1) {
            Connection connection(Socket(accept(m_listener.Get(), nullptr, nullptr)));
            ++m_connections;
            m_behaviour(connection);
            connection.Close();
            ++m_served;
        } else if (wasStopping) {
            return;
        }
    }
}

Socket BoundSocket(int queue, std::uint16_t& port) {
    Socket bound(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    int size = sizeof address;
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    if (bind(bound.Get(), generic, size) != 0 || getsockname(bound.Get(), generic, &size) != 0 ||
        (queue >= 0 && listen(bound.Get(), queue) != 0))
        throw std::runtime_error("no loopback port");
    port = ntohs(address.sin_port);
    return bound;
}

std::string Framed(const std::string& text) {
    const std::size_t size = text.size() + 3;
    return std::string{static_cast<char>(size / 256), static_cast<char>(size % 256)} + text + '\0';
}

Exchange::Exchange(LoopbackPeer::Behaviour behaviour, const TcpPlatform& platform)
    : peer(std::move(behaviour)), client(platform) {
    client.SetTimeout(10);
    EXPECT_EQ(client.Connect(L"localhost", peer.Port()), 1);
}

std::uint16_t RefusingPort() {
    std::uint16_t port = 0;
    BoundSocket(-1, port);
    return port;
}

} // namespace zt::test
