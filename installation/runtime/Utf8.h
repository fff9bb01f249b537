// UTF-8, in which the trace, the fault plan and the installation's text files are written.
#pragma once

#include <string>
#include <string_view>

namespace devinst {

std::string ToUtf8(const std::wstring& text);
std::wstring FromUtf8(std::string_view text);

} // namespace devinst
