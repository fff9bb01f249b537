#pragma once

#include <windows.h>

// Registers a window class of the given look, whose windows do what the system does by default, and
// returns its name, which stays valid until the process ends. The same look gives the same class,
// however often it is asked for; the system takes the class away with the process. Null when the
// class cannot be registered.
const wchar_t* AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr,
                                   HBRUSH background = nullptr, HICON icon = nullptr);
