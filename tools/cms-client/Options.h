// The command line of the client.
#pragma once

#include "Answer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace zt::cmsclient {

struct Options {
    bool wantsHelp = false;
    std::wstring exchangeFolder;
    std::uint16_t port = 0; // 0: a free one
    std::optional<int> timeout;
    std::optional<int> messages;
    std::wstring scriptFile;
    // The answers to the messages in turn; the last one holds for all further ones. Empty with a
    // script file.
    std::vector<Answer> answers;
    // Empty: no program to run.
    std::wstring commandLine;
};

// arguments without the program itself. Throws std::runtime_error when they are invalid.
Options ParseOptions(const std::vector<std::wstring>& arguments);

// The help, on one screen.
extern const char* const Usage;

} // namespace zt::cmsclient
