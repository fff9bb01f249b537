// What the client prints; all in UTF-8.
#pragma once

#include <string>

namespace zt::cmsclient {

void Print(const std::string& text);

// One line, behind the time of day.
void PrintEvent(const std::string& text);

} // namespace zt::cmsclient
