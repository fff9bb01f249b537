// Calls by name on components whose operations are known by name only (editor control, handlers).
#pragma once

#include "framework/Exceptions.h"

#include <windows.h>
#include <oleauto.h>

namespace zt {

// The locale of calls by name (LOCALE_USER_DEFAULT).
constexpr LCID NameLocale = 0x400;

// Looks one name up. Returns the result code of GetIDsOfNames.
HRESULT FindName(IDispatch* object, const wchar_t* name, DISPID* id);

// Reads the property, without arguments. *value must be empty. Returns the result code of Invoke.
HRESULT ReadProperty(IDispatch* object, DISPID id, VARIANT* value);

// Reads the property as an object. *value receives a reference of the caller's; it is null when
// the lookup or the call fails or the value is of another type than VT_DISPATCH.
void GetPropertyByName(IDispatch* object, const wchar_t* name, IDispatch** value);

// Sets the property. Values of an object, array or by-reference type are put by reference first
// and, where that is refused, put plainly. E_POINTER without a value, E_INVALIDARG without an
// object.
HRESULT PutProperty(IDispatch* object, DISPID id, const VARIANT* value);
HRESULT PutPropertyByName(IDispatch* object, const wchar_t* name, const VARIANT* value);

// Calls the method with one positional argument. result may be null; what it holds is cleared
// first, and it stays all zero where the method does not set it. *info receives the details of a
// failure. Returns the result code of Invoke.
HRESULT InvokeMethod(IDispatch* object, DISPID id, const VARIANT& argument, VARIANT* result,
                     ExceptionInfo* info);

// Looks the method up and calls it with one positional argument. result may be null; what it holds
// is cleared when the method is found.
HRESULT InvokeByName(IDispatch* object, const wchar_t* method, const VARIANT& argument,
                     VARIANT* result);

} // namespace zt
