// A component with the property "Kernel", reached by name.
#pragma once

#include "tests/support/FakeKernel.h"

#include <string>
#include <utility>

namespace zt::test {

// Records '<name>.Kernel = object (by reference)' and the like, and answers as its members say. It
// lives where the test puts it; a reference that is still held when it goes fails the test.
class FakeHandler final : public IDispatch {
  public:
    FakeHandler(CallList& calls, std::string name) : m_calls(calls), m_name(std::move(name)) {}
    ~FakeHandler() { EXPECT_EQ(m_references, 0) << m_name << ": references are still held"; }
    FakeHandler(const FakeHandler&) = delete;
    FakeHandler& operator=(const FakeHandler&) = delete;

    HRESULT dispatchResult = S_OK; // of QueryInterface for IDispatch
    bool dispatchObject = true;    // whether it hands the object over
    bool knowsKernel = true;
    HRESULT putByReferenceResult = S_OK;
    HRESULT putResult = S_OK;
    IDispatch* kernel = nullptr; // what was put last, borrowed
    LONG References() const { return m_references; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid != IID_IUnknown && iid != IID_IDispatch)
            return E_NOINTERFACE;
        if (iid == IID_IDispatch && (FAILED(dispatchResult) || !dispatchObject))
            return dispatchResult;
        AddRef();
        *object = static_cast<IDispatch*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override {
        EXPECT_GT(m_references, 0) << m_name << ": released too often";
        return static_cast<ULONG>(--m_references);
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
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
        m_calls.push_back(m_name + ".Kernel = " + ShowArgument(value) +
                          (byReference ? " (by reference)" : ""));
        EXPECT_TRUE(byReference || kind == DISPATCH_PROPERTYPUT);
        kernel = value.pdispVal;
        return byReference ? putByReferenceResult : putResult;
    }

  private:
    static constexpr DISPID KernelId = 17;
    CallList& m_calls;
    std::string m_name;
    LONG m_references = 0;
};

} // namespace zt::test
