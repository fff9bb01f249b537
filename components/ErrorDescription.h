#pragma once

#include <string>

namespace zt {

// Description in the thread's error information, which is taken from the thread; empty where there
// is none.
std::wstring TakeErrorDescription();

// For before a call whose description is of interest: what an earlier call left behind would pass
// for this one's.
void ForgetErrorDescription();

} // namespace zt
