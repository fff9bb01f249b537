// COleDispatchDriver: client side of an automation object, as the framework documents it.
#pragma once

#include "framework/Exceptions.h"

#include <windows.h>
#include <oleauto.h>

// One character for each argument of InvokeHelper, in the order of the arguments; its code is the
// argument's VARTYPE.
#define VTS_I4 "\x03"       // a 'long'
#define VTS_BSTR "\x08"     // a 'const wchar_t*', null for a null BSTR
#define VTS_DISPATCH "\x09" // an 'IDispatch*', borrowed
#define VTS_BOOL "\x0B"     // a 'BOOL', passed as VARIANT_TRUE or VARIANT_FALSE
#define VTS_VARIANT "\x0C"  // a 'const VARIANT*', borrowed

class COleDispatchDriver {
  public:
    COleDispatchDriver() = default;
    // Takes over the caller's reference; with autoRelease false it is only borrowed.
    explicit COleDispatchDriver(IDispatch* dispatch, bool autoRelease = true);
    ~COleDispatchDriver() { ReleaseDispatch(); }
    COleDispatchDriver(const COleDispatchDriver&) = delete;
    COleDispatchDriver& operator=(const COleDispatchDriver&) = delete;

    // Creates the object (any class context) and asks it for IDispatch. FALSE on failure; the
    // driver then holds nothing.
    BOOL CreateDispatch(const wchar_t* progId);

    // Replaces what is held, which is released; null leaves the driver empty.
    void AttachDispatch(IDispatch* dispatch, bool autoRelease = true);
    // Hands what is held to the caller.
    IDispatch* DetachDispatch();
    void ReleaseDispatch();

    // Calls the object. arguments lists VTS_ characters (null for none) for the values behind it.
    // The result is converted to resultType and written to result, which the caller owns: a
    // BSTR*, IDispatch**, VARIANT*, long* or VARIANT_BOOL* that must be empty before the call;
    // VT_EMPTY asks for none. The result stays empty when the component gives no value, and when
    // the driver is empty, which then calls nothing. Raises COleDispatchException when the
    // component reports an error of its own, else COleException; CMemoryException when an argument
    // cannot be built.
    void InvokeHelper(DISPID id, WORD kind, VARTYPE resultType, void* result, const BYTE* arguments,
                      ...);

    IDispatch* m_lpDispatch = nullptr;
    bool m_bAutoRelease = true;
};
