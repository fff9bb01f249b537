// Text in the form that travels.
#pragma once

#include <string>
#include <string_view>

namespace zt {

// A lone surrogate becomes U+FFFD.
std::string ToUtf8(const std::wstring& text);

// Bytes that are no UTF-8 become U+FFFD.
std::wstring FromUtf8(std::string_view text);

// In the ANSI code page of the calling thread; a character that it lacks becomes the code page's
// replacement, mostly "?".
std::string ToThreadAnsi(const std::wstring& text);

} // namespace zt
