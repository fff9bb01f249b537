#include "support/Output.h"

#include "support/Text.h"

#include <cstdio>
#include <cwchar>

namespace zt {

std::wstring FormatText(const wchar_t* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::wstring text = FormatTextV(format, arguments);
    va_end(arguments);
    return text;
}

std::wstring FormatTextV(const wchar_t* format, std::va_list arguments) {
    std::va_list counted;
    va_copy(counted, arguments);
    const int length = _vscwprintf(format, counted);
    va_end(counted);
    if (length <= 0)
        return {};
    std::wstring text(static_cast<std::size_t>(length), L'\0');
    _vsnwprintf(text.data(), text.size(), format, arguments);
    return text;
}

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
