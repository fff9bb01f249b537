#include "Program.h"

#include <stdexcept>

namespace zt::cmsclient {
namespace {

// By the rules that the runtime splits a command line with: backslashes count as such, but for
// those before a double quote.
std::wstring Quoted(const std::wstring& argument) {
    if (!argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos)
        return argument;
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t character : argument) {
        if (character == L'"')
            quoted.append(backslashes + 1, L'\\');
        backslashes = character == L'\\' ? backslashes + 1 : 0;
        quoted += character;
    }
    quoted.append(backslashes, L'\\');
    return quoted + L'"';
}

} // namespace

std::wstring JoinCommandLine(const std::vector<std::wstring>& arguments) {
    if (arguments.size() == 1)
        return arguments.front();
    std::wstring line;
    for (const std::wstring& argument : arguments)
        line += (line.empty() ? L"" : L" ") + Quoted(argument);
    return line;
}

Program::Program(std::wstring commandLine) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
    startup.hStdOutput = GetStdHandle(STD_OUTPUT_HANDLE);
    startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, commandLine.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                        &startup, &process))
        throw std::runtime_error("the program does not start: error " +
                                 std::to_string(GetLastError()));
    CloseHandle(process.hThread);
    m_process = process.hProcess;
}

DWORD Program::ExitCode() const {
    DWORD code = 0;
    GetExitCodeProcess(m_process, &code);
    return code;
}

} // namespace zt::cmsclient
