#include "installation/runtime/Trace.h"

#include "installation/runtime/Environment.h"

#include <windows.h>

namespace devinst {

namespace {

void WriteWhole(HANDLE file, const std::string& text) {
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

[[noreturn]] void End(const std::string& what) {
    WriteWhole(GetStdHandle(STD_ERROR_HANDLE), "development installation: misuse: " + what + "\n");
    TerminateProcess(GetCurrentProcess(), MisuseExitCode);
    for (;;)
        Sleep(INFINITE);
}

// Kept open until the process ends: closing it would only race with the last lines. A trace that
// cannot be written ends the process, since the test that asked for it would read nothing into it.
HANDLE OpenTrace() {
    const std::wstring path = EnvironmentText(L"ZT_TRACE");
    if (path.empty())
        return INVALID_HANDLE_VALUE;
    const HANDLE file = CreateFileW(path.c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        End("cannot write the trace " + ToUtf8(path));
    return file;
}

HANDLE TraceFile() {
    static const HANDLE file = OpenTrace();
    return file;
}

} // namespace

bool IsTracing() {
    return TraceFile() != INVALID_HANDLE_VALUE;
}

void TraceLine(const std::string& line) {
    if (IsTracing())
        WriteWhole(TraceFile(), line + "\n");
}

void FailLoudly(const std::string& what) {
    TraceLine("misuse: " + what);
    End(what);
}

} // namespace devinst
