// Automation calls of a test, with the outcome in one object.
#pragma once

#include "framework/Exceptions.h"

#include <windows.h>
#include <comdef.h>

#include <string>
#include <vector>

namespace devinst::test {

struct Outcome {
    HRESULT code = E_UNEXPECTED;
    _variant_t result;
    std::wstring description; // "(null)" for a missing one
    SCODE scode = S_OK;
};

// arguments in their written order. Property puts get the argument's usual name.
inline Outcome Invoke(IDispatch* object, DISPID id, WORD kind,
                      const std::vector<_variant_t>& arguments = {}) {
    std::vector<VARIANT> reversed(arguments.rbegin(), arguments.rend());
    DISPID putName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {reversed.data(), nullptr, static_cast<UINT>(reversed.size()), 0};
    if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &putName;
        parameters.cNamedArgs = 1;
    }
    Outcome outcome;
    ExceptionInfo info;
    outcome.code =
        object->Invoke(id, IID_NULL, 0x400, kind, &parameters, &outcome.result, &info, nullptr);
    outcome.description = info.bstrDescription != nullptr ? info.bstrDescription : L"(null)";
    outcome.scode = info.scode;
    return outcome;
}

inline DISPID IdOf(IDispatch* object, const wchar_t* name) {
    wchar_t* names[] = {const_cast<wchar_t*>(name)};
    DISPID id = 12345;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, names, 1, 0x400, &id);
    return SUCCEEDED(found) || id != 12345 ? id : 12345;
}

inline Outcome Call(IDispatch* object, const wchar_t* method,
                    const std::vector<_variant_t>& arguments) {
    return Invoke(object, IdOf(object, method), DISPATCH_METHOD, arguments);
}

} // namespace devinst::test
