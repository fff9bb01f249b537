// What the program's messages say.
#pragma once

#include <string>
#include <string_view>

namespace zt::cmsclient {

// Exit codes of the client.
enum class Verdict : int { Success = 0, Failure = 1, None = 2 };

// One message, for people to read: its fields, each in double quotes, separated by blanks. The two
// fields that begin every message of the program are omitted; a message without them is shown
// whole behind "unknown message: ".
std::string Describe(std::string_view message);

// The verdict that the message reports, None for all but the two reports of a status.
Verdict VerdictOf(std::string_view message);

} // namespace zt::cmsclient
