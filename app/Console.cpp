#include "app/Console.h"

#include "app/Format.h"
#include "app/RuntimeText.h"

#include <cstdarg>
#include <cstdio>

namespace zt {

void ConsolePrint(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    const std::string text = ToRuntimeText(FormatTextV(format, arguments));
    va_end(arguments);
    std::fwrite(text.data(), 1, text.size(), stdout);
    // Whoever started the program sees the text even when the process ends abnormally.
    std::fflush(stdout);
}

} // namespace zt
