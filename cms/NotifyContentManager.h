#pragma once

namespace zt {

class CZTInvisible;

// Tells the content-management client, over one TCP connection, that something happened. argument
// may be null (none). Returns 1 when the client took the message and also when no client is
// configured, 0 for every failure, which is written to standard output; nothing is raised.
int NotifyContentManager(CZTInvisible& app, const wchar_t* action, const wchar_t* argument);

} // namespace zt
