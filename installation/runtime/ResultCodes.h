// Result codes as the trace writes them and the fault plan reads them.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace devinst {

// "S_OK", "E_FAIL" ... for the common ones, else eight hexadecimal digits behind "0x".
std::string ResultText(HRESULT code);

// The opposite; also reads decimal numbers.
std::optional<HRESULT> ParseResult(std::string_view text);

} // namespace devinst
