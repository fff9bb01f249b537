#pragma once

#include <string>

namespace zt {

// A text of the platform's, where null is the empty text.
inline std::wstring WideText(const wchar_t* text) {
    return text != nullptr ? text : L"";
}

} // namespace zt
