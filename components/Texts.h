// Automation strings, as the calls on components need them.
#pragma once

#include <windows.h>
#include <comdef.h>

#include <string_view>

namespace zt {

// The text as an automation string. Raises the framework's memory exception when there is no room
// for it (where _bstr_t's own constructors would raise an exception that nobody reports).
_bstr_t MakeText(std::wstring_view text);

// The same for a narrow text, read in the thread's ANSI code page.
_bstr_t MakeText(std::string_view text);

// The string itself, still owned by its holder; null where the holder is empty.
inline BSTR Borrow(const _bstr_t& text) {
    return text.copy(false);
}

// The characters; an empty text instead of null.
inline const wchar_t* OrEmpty(const _bstr_t& text) {
    return text.length() != 0 ? static_cast<const wchar_t*>(text) : L"";
}

} // namespace zt
