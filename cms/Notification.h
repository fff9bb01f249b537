// One message to the content-management client, with its answer.
#pragma once

#include <string>

namespace zt {

class TcpMessageClient;

struct Delivery {
    // 1 when the message was taken or there was nobody to send it to, 0 for every failure.
    int result = 1;
    // What to write to standard output, verbatim; empty for nothing.
    std::wstring text;
};

// Sends the message to the port that "cms.ini" in the exchange folder names. argument may be null
// (none). client returns the client to send with; it is called only when there is something to
// send. Nothing is raised.
Delivery DeliverNotification(const std::wstring& exchangePath, const wchar_t* action,
                             const wchar_t* argument, TcpMessageClient& (*client)());

} // namespace zt
