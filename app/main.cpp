// The process entry: starts the framework and hands the run to the application object.
#include "app/Program.h"
#include "app/ZTInvisible.h"

#include <windows.h>
#include <objbase.h>

// The runtime of some toolchains expands wildcards in arguments unless this is 0.
extern "C" {
int _dowildcard = 0;
}

namespace {

zt::CZTInvisible theApp;

} // namespace

int wmain(int count, wchar_t** arguments, wchar_t** /*environment*/) {
    zt::EndAbnormallyOnUnknownExceptions();
    CoInitialize(nullptr);
    AfxEnableControlContainer();
    const BOOL started = AfxWinInit(GetModuleHandleW(nullptr), nullptr, GetCommandLineW(), SW_HIDE);
    return zt::RunProgram(started != FALSE, theApp, count, arguments);
}
