#include "installation/runtime/Trace.h"

#include "installation/runtime/Environment.h"

#include <windows.h>

namespace devinst {

namespace {

// Kept open until the process ends: closing it would only race with the last lines.
HANDLE OpenTrace() {
    const std::wstring path = EnvironmentText(L"ZT_TRACE");
    if (path.empty())
        return INVALID_HANDLE_VALUE;
    return CreateFileW(path.c_str(), FILE_APPEND_DATA,
                       FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

HANDLE TraceFile() {
    static const HANDLE file = OpenTrace();
    return file;
}

void WriteWhole(HANDLE file, const std::string& text) {
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
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
    WriteWhole(GetStdHandle(STD_ERROR_HANDLE), "development installation: misuse: " + what + "\n");
    TerminateProcess(GetCurrentProcess(), MisuseExitCode);
    for (;;)
        Sleep(INFINITE);
}

std::string ToUtf8(const std::wstring& text) {
    const int length = static_cast<int>(text.size());
    const int size =
        WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string result(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(), size, nullptr, nullptr);
    return result;
}

} // namespace devinst
