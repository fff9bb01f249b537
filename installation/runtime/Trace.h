// The trace: every call on every stand-in, one line each, in the file that ZT_TRACE names.
#pragma once

#include "installation/runtime/Utf8.h"

#include <string>

namespace devinst {

// True when ZT_TRACE is set. Without it the functions below do nothing.
bool IsTracing();

// Appends one line (UTF-8, without line end) and hands it to the system at once, so that the trace
// of a process that is killed is complete up to its last call.
void TraceLine(const std::string& line);

// Tells of a use that no contract allows, in the trace and on standard error, and ends the process
// abnormally with exit code MisuseExitCode.
[[noreturn]] void FailLoudly(const std::string& what);
constexpr unsigned MisuseExitCode = 70;

} // namespace devinst
