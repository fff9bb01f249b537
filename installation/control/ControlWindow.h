// The windows of a control: its own, and its host's, which it watches. Both are counted with the
// living objects ("ControlWindow", "HostWindow"), so that one that stays behind shows.
#pragma once

#include <windows.h>

#include <string>

namespace devinst {

// A child of host that shows nothing. Null when it cannot be made.
HWND MakeControlWindow(HWND host, const RECT& place);

// Counts host until it is destroyed.
void WatchHostWindow(HWND host);

// Its styles, place, identifier, title and visibility, for the trace.
std::string DescribedWindow(HWND window);

} // namespace devinst
