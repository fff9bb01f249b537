#include "app/Program.h"

#include "app/Console.h"
#include "app/ZTInvisible.h"

#include <windows.h>

#include <exception>

namespace zt {

void EndAbnormallyOnUnknownExceptions() {
    // Not by way of the runtime's abort, which writes a text of its own and may ask the user.
    std::set_terminate([] { TerminateProcess(GetCurrentProcess(), 3); });
}

int RunProgram(bool frameworkStarted, CZTInvisible& app, int count, wchar_t** arguments) noexcept {
    if (!frameworkStarted) {
        ConsolePrint(L"Fatal Error: MFC initialization failed\n");
        return 1;
    }
    app.Execute(count, arguments);
    return 0;
}

} // namespace zt
