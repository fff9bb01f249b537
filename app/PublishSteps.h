// The two steps of a run that publish its project and notify the content-management client.
#pragma once

#include <windows.h>

namespace zt {

class CZTInvisible;

// Publishes the open project beside its archive, into a folder or, when the run asks for a package,
// into one file. Returns a success code or raises a message text.
HRESULT PublishProject(CZTInvisible& app, const wchar_t* projectName);

// Reports to the content-management client, over one TCP connection, that something happened.
// argument may be null (none). Returns 1 when the client took the message and also when no client
// is configured, 0 for every failure, which is written to standard output; nothing is raised.
int NotifyContentManager(CZTInvisible& app, const wchar_t* action, const wchar_t* argument);

} // namespace zt
