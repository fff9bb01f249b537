#include "framework/OleDispatchDriver.h"
#include "support/ComPtr.h"

#include <comdef.h>

#include <cstdarg>
#include <cstring>
#include <utility>
#include <vector>

namespace {

// The arguments of one call in the order of DISPPARAMS (last first). It owns the strings; object
// and variant arguments stay the caller's.
class ArgumentList {
  public:
    ArgumentList(const BYTE* types, va_list values) {
        const std::size_t count = types != nullptr ? std::strlen(AsText(types)) : 0;
        m_arguments.resize(count);
        m_owned.reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            Fill(m_arguments[count - 1 - i], types[i], values);
    }

    VARIANTARG* Data() { return m_arguments.empty() ? nullptr : m_arguments.data(); }
    UINT Count() const { return static_cast<UINT>(m_arguments.size()); }

  private:
    static const char* AsText(const BYTE* types) { return reinterpret_cast<const char*>(types); }

    void Fill(VARIANTARG& argument, BYTE type, va_list& values) {
        VariantInit(&argument);
        argument.vt = type;
        switch (type) {
        case VT_I4:
            argument.lVal = va_arg(values, long);
            break;
        case VT_BSTR:
            argument.bstrVal = CopyText(va_arg(values, const wchar_t*));
            break;
        case VT_DISPATCH:
            argument.pdispVal = va_arg(values, IDispatch*);
            break;
        case VT_BOOL:
            argument.boolVal = va_arg(values, BOOL) ? VARIANT_TRUE : VARIANT_FALSE;
            break;
        case VT_VARIANT:
            argument = *va_arg(values, const VARIANT*);
            break;
        default:
            AfxThrowOleException(DISP_E_BADVARTYPE);
        }
    }

    BSTR CopyText(const wchar_t* text) {
        if (text == nullptr)
            return nullptr;
        const BSTR copy = SysAllocString(text);
        if (copy == nullptr)
            AfxThrowMemoryException();
        m_owned.emplace_back(copy, false);
        return copy;
    }

    std::vector<VARIANTARG> m_arguments;
    std::vector<_bstr_t> m_owned;
};

// Moves the call's result to the caller's place, converted to the type that the caller asks for.
void DeliverResult(_variant_t& value, VARTYPE type, void* result) {
    if (type == VT_VARIANT) {
        *static_cast<VARIANT*>(result) = value.Detach();
        return;
    }
    if (value.vt == VT_EMPTY || value.vt == VT_NULL)
        return;
    if (value.vt != type) {
        const HRESULT converted = VariantChangeType(&value, &value, 0, type);
        if (FAILED(converted))
            AfxThrowOleException(converted);
    }
    const VARIANT plain = value.Detach();
    switch (type) {
    case VT_BSTR:
        *static_cast<BSTR*>(result) = plain.bstrVal;
        break;
    case VT_DISPATCH:
        *static_cast<IDispatch**>(result) = plain.pdispVal;
        break;
    case VT_I4:
        *static_cast<long*>(result) = plain.lVal;
        break;
    case VT_BOOL:
        *static_cast<VARIANT_BOOL*>(result) = plain.boolVal;
        break;
    default:
        AfxThrowOleException(DISP_E_BADVARTYPE);
    }
}

// An object that can be run is run before it is asked for more. The platform's own helper does the
// same, but falls over one that says it can and hands over nothing.
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

void COleDispatchDriver::InvokeHelper(DISPID id, WORD kind, VARTYPE resultType, void* result,
                                      const BYTE* arguments, ...) {
    if (m_lpDispatch == nullptr)
        return;
    va_list values;
    va_start(values, arguments);
    ArgumentList list(arguments, values);
    va_end(values);

    DISPID putName = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {list.Data(), nullptr, list.Count(), 0};
    if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &putName;
        parameters.cNamedArgs = 1;
    }
    _variant_t value;
    ExceptionInfo info;
    UINT wrongArgument = 0;
    const HRESULT outcome =
        m_lpDispatch->Invoke(id, IID_NULL, 0, kind, &parameters,
                             resultType == VT_EMPTY ? nullptr : &value, &info, &wrongArgument);
    if (outcome == DISP_E_EXCEPTION)
        AfxThrowOleDispatchException(info);
    if (FAILED(outcome))
        AfxThrowOleException(outcome);
    if (resultType != VT_EMPTY)
        DeliverResult(value, resultType, result);
}
