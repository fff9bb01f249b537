// An automation object that records every Invoke and answers it as the test says.
#pragma once

#include <comdef.h>
#include <oleauto.h>

#include <functional>
#include <string>
#include <vector>

namespace zt::test {

// Lives where the test puts it: its reference count deletes nothing, it is for the test to look at.
class RecordingDispatch : public IDispatch {
  public:
    struct Call {
        DISPID id;
        WORD kind;
        LCID locale;
        std::vector<_variant_t> arguments; // as the platform passes them: last first
        std::vector<DISPID> names;
        bool wantsResult;
        bool wantsExceptionInfo;
    };

    virtual ~RecordingDispatch() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch;
        *object = known ? this : nullptr;
        if (known)
            AddRef();
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                     UINT*) override {
        if (iid != IID_NULL)
            return DISP_E_UNKNOWNINTERFACE;
        Call call = {id, kind, locale, {}, {}, result != nullptr, info != nullptr};
        for (UINT i = 0; i < parameters->cArgs; ++i)
            call.arguments.emplace_back(parameters->rgvarg[i]);
        for (UINT i = 0; i < parameters->cNamedArgs; ++i)
            call.names.push_back(parameters->rgdispidNamedArgs[i]);
        m_calls.push_back(call);
        return m_answer ? m_answer(call, result, info) : S_OK;
    }

    std::vector<Call> m_calls;
    // Gives the call's result; result and info are null where the caller wants none.
    std::function<HRESULT(const Call& call, VARIANT* result, EXCEPINFO* info)> m_answer;
    ULONG m_references = 0;
};

} // namespace zt::test
