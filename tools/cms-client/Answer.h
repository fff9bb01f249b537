// How the client answers one message.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

namespace zt::cmsclient {

struct Answer {
    enum class End {
        WhenTheSenderLeaves, // the connection stays open as long as the sender wants it
        AtOnce,
        Reset, // without the orderly end of a connection
    };

    std::string name;  // as it was asked for
    std::string bytes; // sent as they are
    std::chrono::milliseconds delay{0};
    std::chrono::milliseconds gap{0}; // after each byte; 0 sends all at once
    End end = End::WhenTheSenderLeaves;
};

// Reads the description of an answer, such as "error Disk full" (in UTF-8; Usage lists them all).
// Throws std::runtime_error when it is none.
Answer ParseAnswer(std::string_view description);

// Reads one answer a line; empty lines and lines that begin with "#" are ignored. Throws
// std::runtime_error, with the number of the line, and for a script without an answer.
std::vector<Answer> ParseScript(std::string_view script);

} // namespace zt::cmsclient
