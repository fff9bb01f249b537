// zt-test-probe ACTION [ARGUMENT]: misbehaves as told, to try the harness itself.
//   write PATH   writes a file            exit CODE   ends with the code
//   hang         waits for minutes        orphan      starts itself with "hang" and ends
//   temp NAME    writes a file of that name into the temporary folder
//   hold PATH MARK   keeps the file open, shared with nobody, from when it makes MARK until that
//   goes crash        violates access          trace TEXT  writes the text as the trace, then ends
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>

namespace {

void Write(const wchar_t* path, const wchar_t* text) {
    FILE* file = _wfopen(path, L"w");
    if (file != nullptr) {
        fputws(text, file);
        fclose(file);
    }
}

int Hold(const wchar_t* path, const wchar_t* mark) {
    const HANDLE file = CreateFileW(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return 1;
    Write(mark, L"held\n");
    while (GetFileAttributesW(mark) != INVALID_FILE_ATTRIBUTES)
        Sleep(10);
    CloseHandle(file);
    return 0;
}

void StartHangingCopy(const wchar_t* program) {
    std::wstring line = L"\"" + std::wstring(program) + L"\" hang";
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process)) {
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
    }
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    const std::wstring action = count > 1 ? arguments[1] : L"";
    const wchar_t* argument = count > 2 ? arguments[2] : L"";
    if (action == L"write") {
        Write(argument, L"written\n");
    } else if (action == L"exit") {
        return _wtoi(argument);
    } else if (action == L"hang") {
        Sleep(30'000);
    } else if (action == L"orphan") {
        StartHangingCopy(arguments[0]);
    } else if (action == L"hold") {
        return Hold(argument, count > 3 ? arguments[3] : L"");
    } else if (action == L"crash") {
        RaiseException(STATUS_ACCESS_VIOLATION, EXCEPTION_NONCONTINUABLE, 0, nullptr);
    } else if (action == L"temp") {
        wchar_t folder[MAX_PATH + 1] = {};
        GetTempPathW(MAX_PATH + 1, folder);
        Write((std::wstring(folder) + argument).c_str(), L"temporary\n");
    } else if (action == L"trace") {
        Write(_wgetenv(L"ZT_TRACE"), argument);
    }
    return 0;
}
