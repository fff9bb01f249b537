#pragma once

#include "components/Values.h"

namespace zt {
inline std::wstring TakeErrorDescription() { return TakeErrorInfo(); }
inline void ForgetErrorDescription() { ClearErrorInfo(); }
} // namespace zt
