#include "app/Program.h"

#include "app/ZTInvisible.h"
#include "support/Output.h"

#include <windows.h>

#include <exception>

namespace zt {

namespace {

// Not by way of the runtime's abort, which writes a text of its own and may ask the user.
void EndAbnormally() {
    TerminateProcess(GetCurrentProcess(), 3);
}

} // namespace

void EndAbnormallyOnUnknownExceptions() {
    std::set_terminate(EndAbnormally);
}

int RunProgram(bool frameworkStarted, CZTInvisible& app, int count, wchar_t** arguments) noexcept {
    if (!frameworkStarted) {
        ConsolePrint(L"Fatal Error: MFC initialization failed\n");
        return 1;
    }
    try {
        app.Execute(count, arguments);
    } catch (...) {
        // A component's library may bring a runtime of its own, and its exceptions with them a
        // terminate handler other than the one above.
        EndAbnormally();
    }
    return 0;
}

} // namespace zt
