#include "framework/OleDispatchDriver.h"
#include "support/ComPtr.h"

#include <utility>

namespace {

// Converts the value in its place; one that holds nothing becomes empty.
void ConvertResult(_variant_t& value, VARTYPE type) {
    if (value.vt == VT_EMPTY || value.vt == VT_NULL) {
        value.vt = VT_EMPTY;
        return;
    }
    const HRESULT converted = value.vt == type ? S_OK : VariantChangeType(&value, &value, 0, type);
    if (FAILED(converted))
        AfxThrowOleException(converted);
}

// An object that can be run is run before it is asked for more. The platform's own helper does the
// same, but crashes on one that answers the interface with null.
HRESULT Run(IUnknown* object) {
    ComPtr<IRunnableObject> runnable;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(&runnable))) || runnable == nullptr)
        return S_OK;
    return runnable->Run(nullptr);
}

} // namespace

COleDispatchDriver::COleDispatchDriver(IDispatch* dispatch, bool autoRelease)
    : m_lpDispatch(dispatch), m_bAutoRelease(autoRelease) {}

BOOL COleDispatchDriver::CreateDispatch(const wchar_t* progId) {
    ReleaseDispatch();
    CLSID classId = {};
    ComPtr<IUnknown> object;
    IDispatch* dispatch = nullptr;
    if (FAILED(CLSIDFromProgID(progId, &classId)) ||
        FAILED(CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&object))) ||
        object == nullptr || FAILED(Run(object.Get())) ||
        FAILED(object->QueryInterface(IID_PPV_ARGS(&dispatch))) || dispatch == nullptr)
        return FALSE;
    AttachDispatch(dispatch);
    return TRUE;
}

void COleDispatchDriver::AttachDispatch(IDispatch* dispatch, bool autoRelease) {
    ReleaseDispatch();
    m_lpDispatch = dispatch;
    m_bAutoRelease = autoRelease;
}

IDispatch* COleDispatchDriver::DetachDispatch() {
    return std::exchange(m_lpDispatch, nullptr);
}

void COleDispatchDriver::ReleaseDispatch() {
    IDispatch* held = DetachDispatch();
    if (held != nullptr && m_bAutoRelease)
        held->Release();
}

_variant_t COleDispatchDriver::InvokeHelper(DISPID id, WORD kind, VARTYPE resultType,
                                            std::span<VARIANTARG> arguments) {
    _variant_t result;
    if (m_lpDispatch == nullptr)
        return result;
    DISPID putName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &putName;
        parameters.cNamedArgs = 1;
    }
    ExceptionInfo info;
    UINT wrongArgument = 0;
    const HRESULT outcome =
        m_lpDispatch->Invoke(id, IID_NULL, 0, kind, &parameters,
                             resultType == VT_EMPTY ? nullptr : &result, &info, &wrongArgument);
    if (outcome == DISP_E_EXCEPTION)
        AfxThrowOleDispatchException(info);
    if (FAILED(outcome))
        AfxThrowOleException(outcome);
    if (resultType != VT_EMPTY && resultType != VT_VARIANT)
        ConvertResult(result, resultType);
    return result;
}
