// Wide printf-style texts of any length.
#pragma once

#include <cstdarg>
#include <string>

namespace zt {

// "%s" and "%ws" take a wide text (a null one reads "(null)").
std::wstring FormatText(const wchar_t* format, ...);
std::wstring FormatTextV(const wchar_t* format, std::va_list arguments);

} // namespace zt
