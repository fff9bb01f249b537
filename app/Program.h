// What the entry function is composed of.
#pragma once

namespace zt {

class CZTInvisible;

// From here on, an unhandled exception ends the process at once with exit code 3, without
// dialog or text.
void EndAbnormallyOnUnknownExceptions();

// Performs the run. Returns the process exit code: 0 whatever the outcome of the run, 1 (reported
// on standard output) when the framework did not start. An exception that the run does not handle
// ends the process.
int RunProgram(bool frameworkStarted, CZTInvisible& app, int count, wchar_t** arguments) noexcept;

} // namespace zt
