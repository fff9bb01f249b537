// The client's end of the connections.
#pragma once

#include "Answer.h"
#include "Message.h"

#include "cms/Socket.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zt::cmsclient {

// Windows Sockets, for the lifetime of the object. Throws std::runtime_error.
class Winsock {
  public:
    Winsock();
    ~Winsock() { WSACleanup(); }
    Winsock(const Winsock&) = delete;
    Winsock& operator=(const Winsock&) = delete;
};

class Server {
  public:
    // Listens on the loopback address; port 0 is any free one. Throws std::runtime_error.
    Server(std::uint16_t port, std::vector<Answer> answers);

    std::uint16_t Port() const { return m_port; }

    // Waits for a connection, takes its message, prints and answers it. False when none was made in
    // that time.
    bool ServeOne(Milliseconds patience);

    int Messages() const { return m_messages; }
    // The last verdict that was reported.
    zt::cmsclient::Verdict Verdict() const { return m_verdict; }

  private:
    Winsock m_winsock;
    std::uint16_t m_port = 0;
    Socket m_listener;
    std::vector<Answer> m_answers;
    int m_messages = 0;
    zt::cmsclient::Verdict m_verdict = zt::cmsclient::Verdict::None;
};

} // namespace zt::cmsclient
