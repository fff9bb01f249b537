#include "Output.h"

#include <windows.h>

#include <array>
#include <cstdio>

namespace zt::cmsclient {

void Print(const std::string& text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    // In its place among what the program writes.
    std::fflush(stdout);
}

void PrintEvent(const std::string& text) {
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::array<char, 32> time{};
    std::snprintf(time.data(), time.size(), "%02u:%02u:%02u.%03u  ", unsigned{now.wHour},
                  unsigned{now.wMinute}, unsigned{now.wSecond}, unsigned{now.wMilliseconds});
    Print(time.data() + text + "\n");
}

} // namespace zt::cmsclient
