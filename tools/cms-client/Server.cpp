#include "Server.h"

#include "Output.h"

#include "cms/Protocol.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace zt::cmsclient {
namespace {

using Clock = std::chrono::steady_clock;

// How long the parts of one message may take to arrive.
constexpr Milliseconds MessagePatience{10'000};
constexpr std::size_t LengthSize = FrameLengthSize;

Milliseconds Until(Clock::time_point time) {
    return std::chrono::ceil<Milliseconds>(time - Clock::now());
}

std::size_t Length(const std::string& frame) {
    return static_cast<unsigned char>(frame[0]) * 256u + static_cast<unsigned char>(frame[1]);
}

// Reads up to size bytes in all; false when the sender leaves or takes too long before.
bool Fill(SOCKET socket, std::string& bytes, std::size_t size, Clock::time_point giveUp) {
    std::array<char, 4096> part{};
    while (bytes.size() < size) {
        if (WaitUntilReadable(socket, Until(giveUp)) != 1)
            return false;
        const std::size_t wanted = std::min(size - bytes.size(), part.size());
        const int count = recv(socket, part.data(), static_cast<int>(wanted), 0);
        if (count <= 0)
            return false;
        bytes.append(part.data(), static_cast<std::size_t>(count));
    }
    return true;
}

// What came, whole or not.
std::string ReadFrame(SOCKET socket) {
    const Clock::time_point giveUp = Clock::now() + MessagePatience;
    std::string frame;
    if (Fill(socket, frame, LengthSize, giveUp))
        Fill(socket, frame, Length(frame), giveUp);
    return frame;
}

// Waits until the sender leaves, or until the time is over; true when it has left.
bool WaitForLeave(SOCKET socket, Clock::time_point giveUp) {
    std::array<char, 4096> dropped{};
    while (WaitUntilReadable(socket, Until(giveUp)) == 1) {
        if (recv(socket, dropped.data(), static_cast<int>(dropped.size()), 0) <= 0)
            return true;
    }
    return false;
}

void SendBytes(SOCKET socket, const Answer& answer) {
    const std::size_t step =
        answer.gap.count() > 0 ? 1 : std::max<std::size_t>(answer.bytes.size(), 1);
    for (std::size_t sent = 0; sent < answer.bytes.size(); sent += step) {
        if (send(socket, answer.bytes.data() + sent, static_cast<int>(step), 0) <= 0)
            return;
        if (answer.gap.count() > 0 && WaitForLeave(socket, Clock::now() + answer.gap))
            return;
    }
}

void Reply(Socket& connection, const Answer& answer) {
    if (answer.delay.count() > 0 && WaitForLeave(connection.Get(), Clock::now() + answer.delay))
        return;
    SendBytes(connection.Get(), answer);
    if (answer.end == Answer::End::WhenTheSenderLeaves) {
        while (!WaitForLeave(connection.Get(), Clock::now() + MessagePatience)) {
        }
    } else if (answer.end == Answer::End::Reset) {
        const linger none{1, 0};
        setsockopt(connection.Get(), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&none),
                   sizeof none);
    }
}

Socket Listen(std::uint16_t& port) {
    // The program that is started must not keep the port.
    Socket listener(WSASocketW(AF_INET, SOCK_STREAM, IPPROTO_TCP, nullptr, 0,
                               WSA_FLAG_OVERLAPPED | WSA_FLAG_NO_HANDLE_INHERIT));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = htons(port);
    auto* generic = reinterpret_cast<sockaddr*>(&address);
    int size = sizeof address;
    if (bind(listener.Get(), generic, size) != 0 || listen(listener.Get(), SOMAXCONN) != 0 ||
        getsockname(listener.Get(), generic, &size) != 0)
        throw std::runtime_error("cannot listen on port " + std::to_string(port) + ": error " +
                                 std::to_string(WSAGetLastError()));
    port = ntohs(address.sin_port);
    return listener;
}

} // namespace

Winsock::Winsock() {
    WSADATA data{};
    const int error = WSAStartup(MAKEWORD(2, 2), &data);
    if (error != 0)
        throw std::runtime_error("no Windows Sockets: error " + std::to_string(error));
}

Server::Server(std::uint16_t port, std::vector<Answer> answers)
    : m_port(port), m_listener(Listen(m_port)), m_answers(std::move(answers)) {}

bool Server::ServeOne(Milliseconds patience) {
    if (WaitUntilReadable(m_listener.Get(), patience) != 1)
        return false;
    Socket connection(accept(m_listener.Get(), nullptr, nullptr));
    const std::string frame = ReadFrame(connection.Get());
    const auto index =
        std::min<std::size_t>(static_cast<std::size_t>(m_messages), m_answers.size() - 1);
    const Answer& answer = m_answers[index];
    ++m_messages;
    if (const auto message = TextInFrame(frame)) {
        PrintEvent(Describe(*message) + "  -> " + answer.name);
        if (VerdictOf(*message) != Verdict::None)
            m_verdict = VerdictOf(*message);
    } else {
        PrintEvent("no frame but " + std::to_string(frame.size()) + " bytes  -> " + answer.name);
    }
    Reply(connection, answer);
    return true;
}

} // namespace zt::cmsclient
