#include "project/ChangeSteps.h"

#include "app/ZTInvisible.h"
#include "components/ByName.h"
#include "components/Creation.h"
#include "components/Values.h"

namespace zt {

namespace {

ComPtr<IDispatch> CreateHandler(const std::wstring& progId) {
    ComPtr<IDispatch> handler;
    if (FAILED(CreateEditHandler(progId.c_str(), nullptr, AllServers, &handler)))
        throw CString(L"Can't create edit handler: ") + progId.c_str();
    return handler;
}

// Every boolean is a success, false as well; of any other type, the first 16 bits decide. A method
// that returns nothing has failed.
bool IsSuccess(const VARIANT& result) {
    return result.vt == VT_BOOL || (result.vt != VT_EMPTY && result.iVal != 0);
}

CString FailureText(const std::wstring& method, const ExceptionInfo& info) {
    CString text = CString(L"Error calling EDIT method '") + method.c_str() + L"'. ";
    return text += info.bstrDescription;
}

// Returns what the method returned.
_variant_t CallHandler(IDispatch* handler, const std::wstring& method, IDispatch* kernel) {
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(FindName(handler, method.c_str(), &id)))
        throw CString(L"EDIT method not found: ") + method.c_str();
    _variant_t result;
    ExceptionInfo info;
    const HRESULT called = InvokeMethod(handler, id, _variant_t(kernel), &result, &info);
    if (FAILED(called) || !IsSuccess(result)) {
        info.Complete();
        throw FailureText(method, info);
    }
    return _variant_t(result.GetVARIANT(), false);
}

} // namespace

bool RunEditHandler(CZTInvisible& app, const std::wstring& progId, const std::wstring& method) {
    const ComPtr<IDispatch> handler = CreateHandler(progId);
    _variant_t result = CallHandler(handler.Get(), method, app.m_pKernelAdmin.Get());
    app.Log(L"Edit handler (ProgID: '%s', Method: '%s') succeeded\n", progId.c_str(),
            method.c_str());
    ClearVariant(result);
    return true;
}

} // namespace zt
