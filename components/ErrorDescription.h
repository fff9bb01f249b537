#pragma once

#include <string>

namespace zt {

// Description in the thread's error information, which is taken from the thread; empty where there
// is none.
std::wstring TakeErrorDescription();

} // namespace zt
