#pragma once

namespace zt {

// Writes the formatted text ("%s" is a wide text) to standard output. A character without a form in
// the runtime's default character set becomes "?".
void ConsolePrint(const wchar_t* format, ...);

} // namespace zt
