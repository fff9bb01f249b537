// A component with the property "Kernel", reached by name.
#pragma once

#include "tests/support/FakeDispatch.h"

#include <string>
#include <utility>

namespace zt::test {

// Records '<name>.Kernel = object (by reference)' and the like, and answers as its members say.
class FakeHandler final : public FakeDispatch {
  public:
    using FakeDispatch::FakeDispatch;

    HRESULT dispatchResult = S_OK; // of QueryInterface for IDispatch
    bool dispatchObject = true;    // whether it hands the object over
    bool knowsKernel = true;
    HRESULT putByReferenceResult = S_OK;
    HRESULT putResult = S_OK;
    IDispatch* kernel = nullptr; // what was put last, borrowed

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid == IID_IDispatch && (FAILED(dispatchResult) || !dispatchObject))
            return dispatchResult;
        return FakeDispatch::QueryInterface(iid, object);
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID,
                                            DISPID* ids) override {
        EXPECT_EQ(count, 1U);
        EXPECT_STREQ(names[0], L"Kernel");
        *ids = knowsKernel ? KernelId : DISPID_UNKNOWN;
        return knowsKernel ? S_OK : DISP_E_UNKNOWNNAME;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* parameters,
                                     VARIANT*, EXCEPINFO*, UINT*) override {
        EXPECT_EQ(id, KernelId);
        EXPECT_EQ(parameters->cArgs, 1U);
        EXPECT_EQ(parameters->cNamedArgs, 1U);
        EXPECT_EQ(parameters->rgdispidNamedArgs[0], DISPID_PROPERTYPUT);
        const VARIANT& value = parameters->rgvarg[0];
        EXPECT_EQ(value.vt, VT_DISPATCH);
        const bool byReference = kind == DISPATCH_PROPERTYPUTREF;
        m_calls->push_back(m_name + ".Kernel = " + ShowArgument(value) +
                           (byReference ? " (by reference)" : ""));
        EXPECT_TRUE(byReference || kind == DISPATCH_PROPERTYPUT);
        kernel = value.pdispVal;
        return byReference ? putByReferenceResult : putResult;
    }

  private:
    static constexpr DISPID KernelId = 17;
};

} // namespace zt::test
