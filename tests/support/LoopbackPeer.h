// The content-management client of the unit tests: a server on this machine's loopback address, on
// a thread of the test's process.
#pragma once

#include "cms/TcpMessageClient.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace zt::test {

// Winsock for the test's own sockets, for the lifetime of the object.
class Winsock {
  public:
    Winsock();
    ~Winsock() { WSACleanup(); }
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;
};

// One accepted connection. What fails on it ends silently: the client may leave at any time.
class Connection {
  public:
    explicit Connection(Socket socket) : m_socket(std::move(socket)) {}

    // Fewer bytes when the client ends the connection. A client that neither sends nor ends it for
    // ten seconds adds "<silence>".
    std::string Read(std::size_t size);
    // One frame by its length field, whole.
    std::string ReadFrame();
    std::string ReadToEnd() { return Read(static_cast<std::size_t>(-1)); }
    // False when the client did not take all.
    bool Send(std::string_view bytes);
    void Close() { m_socket.Close(); }
    // Ends the connection as a crashed process does.
    void Reset();

  private:
    Socket m_socket;
};

class LoopbackPeer {
  public:
    using Behaviour = std::function<void(Connection&)>;

    // Serves one connection after the other, each as behaviour says; closes each then.
    explicit LoopbackPeer(Behaviour behaviour);
    // Ends the thread once it is done with the connections that were made.
    ~LoopbackPeer() { Stop(); }
    LoopbackPeer(const LoopbackPeer&) = delete;
    LoopbackPeer& operator=(const LoopbackPeer&) = delete;

    std::uint16_t Port() const { return m_port; }
    // Afterwards all that the behaviour did has happened.
    void Stop();
    int Connections() const { return m_connections; }
    // Those of the connections that are closed again.
    int Served() const { return m_served; }

  private:
    void Serve();

    Winsock m_winsock;
    Behaviour m_behaviour;
    std::uint16_t m_port = 0;
    Socket m_listener;
    std::atomic<bool> m_isStopping = false;
    std::atomic<int> m_connections = 0;
    std::atomic<int> m_served = 0;
    std::thread m_thread;
};

// Bound to a loopback port of its own; listens with a queue of that length, or not at all when it
// is negative.
Socket BoundSocket(int queue, std::uint16_t& port);

// The text in a frame.
std::string Framed(const std::string& text);

// A message client connected to a peer.
struct Exchange {
    explicit Exchange(LoopbackPeer::Behaviour behaviour, const TcpPlatform& platform = {});

    LoopbackPeer peer;
    TcpMessageClient client;
};

// A port on which nothing listens.
std::uint16_t RefusingPort();

} // namespace zt::test
