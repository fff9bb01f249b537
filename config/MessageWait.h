#pragma once

#include <windows.h>

#include <functional>

namespace zt {

// Waits until the condition holds, handing out this thread's messages meanwhile; WM_QUIT stays for
// whoever waits for it. False when the condition does not hold after that many milliseconds.
bool WaitWithMessages(const std::function<bool()>& condition, DWORD longest);

} // namespace zt
