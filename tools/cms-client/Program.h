// The program that the client starts.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace zt::cmsclient {

// One argument stands as it is (a whole command line); several are quoted where they need it, so
// that the program gets them one by one as they are.
std::wstring JoinCommandLine(const std::vector<std::wstring>& arguments);

// A process that shares this one's standard handles. It is left running when the object goes.
class Program {
  public:
    // Throws std::runtime_error when it cannot be started.
    explicit Program(std::wstring commandLine);
    ~Program() { CloseHandle(m_process); }
    Program(const Program&) = delete;
    Program& operator=(const Program&) = delete;

    bool HasEnded() const { return WaitForSingleObject(m_process, 0) == WAIT_OBJECT_0; }
    DWORD ExitCode() const;

  private:
    HANDLE m_process = nullptr;
};

} // namespace zt::cmsclient
