// COleDispatchDriver: client side of an automation object, as the framework documents it.
#pragma once

#include "framework/Exceptions.h"

#include <windows.h>
#include <comdef.h>
#include <oleauto.h>

#include <span>

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

    // Calls the object. arguments are in the order of DISPPARAMS (last first) and stay the
    // caller's. Returns the result converted to resultType; VT_VARIANT leaves it as it is, VT_EMPTY
    // asks for none. It is empty when the component gives no value (VT_EMPTY or VT_NULL), and when
    // the driver is empty, which then calls nothing. Raises COleDispatchException when the
    // component reports an error of its own, else COleException.
    _variant_t InvokeHelper(DISPID id, WORD kind, VARTYPE resultType,
                            std::span<VARIANTARG> arguments);

    IDispatch* m_lpDispatch = nullptr;
    bool m_bAutoRelease = true;
};
