// Automation strings, VARIANTs and the thread's error information, for calls on components.
#pragma once

#include <windows.h>
#include <comdef.h>
#include <oleauto.h>

#include <string>
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

// VariantClear, raising the framework's OLE exception with its result code where it fails (a
// locked array, say). A destructor can only ignore such a failure.
void ClearVariant(VARIANT& value);

// The element at {first, second} (in the order in which SafeArrayGetElement takes indices) of a
// VARIANT that is exactly VT_ARRAY | VT_BSTR; empty for any other value and where there is no such
// element. An array of one dimension takes first alone; one of more than two has no such element.
// Raises the framework's memory exception.
_bstr_t TextElement(const VARIANT& array, LONG first, LONG second);

// Description in the thread's error information, which is taken from the thread; empty where there
// is none.
std::wstring TakeErrorInfo();

// For before a call whose description is of interest: what an earlier call left behind would pass
// for this one's.
void ClearErrorInfo();

} // namespace zt
