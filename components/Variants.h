// VARIANTs that components hand over.
#pragma once

#include <windows.h>
#include <comdef.h>
#include <oleauto.h>

namespace zt {

// VariantClear, raising the framework's OLE exception with its result code where it fails (a
// locked array, say). A destructor can only pass such a failure over.
void ClearVariant(VARIANT& value);

// Converts the value in its place. False where it holds nothing (VT_EMPTY, VT_NULL) and is left as
// it is. Raises the framework's OLE exception where it cannot be converted.
bool ConvertVariant(VARIANT& value, VARTYPE type);

// The element at {first, second} (in the order in which SafeArrayGetElement takes indices) of a
// VARIANT that is exactly VT_ARRAY | VT_BSTR; empty for any other value and where there is no such
// element. An array of one dimension takes first alone; one of more than two has no such element.
// Raises the framework's memory exception.
_bstr_t TextElement(const VARIANT& array, LONG first, LONG second);

} // namespace zt
