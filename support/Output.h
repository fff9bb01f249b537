// Wide printf-style texts of any length, and their way to standard output.
#pragma once

#include <cstdarg>
#include <string>

namespace zt {

// "%s" and "%ws" take a wide text (a null one reads "(null)").
std::wstring FormatText(const wchar_t* format, ...);
std::wstring FormatTextV(const wchar_t* format, std::va_list arguments);

// Writes the formatted text to standard output. A character without a form in the runtime's default
// character set becomes "?".
void ConsolePrint(const wchar_t* format, ...);

} // namespace zt
