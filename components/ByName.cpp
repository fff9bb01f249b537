#include "components/ByName.h"

#include "components/Values.h"

#include <comdef.h>

namespace zt {

namespace {

bool IsPutByReferenceFirst(VARTYPE type) {
    return type == VT_DISPATCH || type == VT_UNKNOWN || (type & (VT_ARRAY | VT_BYREF)) != 0;
}

HRESULT Put(IDispatch* object, DISPID id, WORD kind, const VARIANT& value) {
    VARIANTARG argument = value;
    DISPID putName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {&argument, &putName, 1, 1};
    ExceptionInfo info;
    return object->Invoke(id, IID_NULL, NameLocale, kind, &parameters, nullptr, &info, nullptr);
}

} // namespace

HRESULT FindName(IDispatch* object, const wchar_t* name, DISPID* id) {
    *id = DISPID_UNKNOWN;
    if (object == nullptr)
        return E_INVALIDARG;
    wchar_t* names[] = {const_cast<wchar_t*>(name)};
    return object->GetIDsOfNames(IID_NULL, names, 1, NameLocale, id);
}

HRESULT ReadProperty(IDispatch* object, DISPID id, VARIANT* value) {
    DISPPARAMS none = {};
    ExceptionInfo info;
    return object->Invoke(id, IID_NULL, NameLocale, DISPATCH_PROPERTYGET, &none, value, &info,
                          nullptr);
}

void GetPropertyByName(IDispatch* object, const wchar_t* name, IDispatch** value) {
    *value = nullptr;
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(FindName(object, name, &id)))
        return;
    _variant_t result;
    if (SUCCEEDED(ReadProperty(object, id, &result)) && result.vt == VT_DISPATCH)
        *value = result.Detach().pdispVal;
}

HRESULT PutProperty(IDispatch* object, DISPID id, const VARIANT* value) {
    if (value == nullptr)
        return E_POINTER;
    if (object == nullptr)
        return E_INVALIDARG;
    if (IsPutByReferenceFirst(value->vt)) {
        const HRESULT byReference = Put(object, id, DISPATCH_PROPERTYPUTREF, *value);
        if (SUCCEEDED(byReference))
            return byReference;
    }
    return Put(object, id, DISPATCH_PROPERTYPUT, *value);
}

HRESULT PutPropertyByName(IDispatch* object, const wchar_t* name, const VARIANT* value) {
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = FindName(object, name, &id);
    return FAILED(found) ? found : PutProperty(object, id, value);
}

HRESULT InvokeMethod(IDispatch* object, DISPID id, const VARIANT& argument, VARIANT* result,
                     ExceptionInfo* info) {
    if (result != nullptr) {
        ClearVariant(*result);
        *result = VARIANT{};
    }
    VARIANTARG positional = argument;
    DISPPARAMS parameters = {&positional, nullptr, 1, 0};
    return object->Invoke(id, IID_NULL, NameLocale, DISPATCH_METHOD, &parameters, result, info,
                          nullptr);
}

HRESULT InvokeByName(IDispatch* object, const wchar_t* method, const VARIANT& argument,
                     VARIANT* result) {
    DISPID id = DISPID_UNKNOWN;
    const HRESULT found = FindName(object, method, &id);
    if (FAILED(found))
        return found;
    ExceptionInfo info;
    return InvokeMethod(object, id, argument, result, &info);
}

} // namespace zt
