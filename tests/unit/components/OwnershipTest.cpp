// References that a call hands over are counted once.
#include "components/Automation.h"
#include "components/contracts/Administration.h"
#include "support/ComPtr.h"

#include <gtest/gtest.h>

using namespace zt;

namespace {

// Answers every call with a reference to itself.
class Counted final : public IDispatch {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override { return --m_references; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                     EXCEPINFO*, UINT*) override {
        result->vt = VT_DISPATCH;
        result->pdispVal = this;
        AddRef();
        return S_OK;
    }

    ULONG m_references = 1;
};

} // namespace

TEST(Adopt, TakesTheCallersReferenceAndNoOther) {
    Counted object;
    {
        const ComPtr<IDispatch> owner = Adopt<IDispatch>(&object);
        EXPECT_EQ(owner.Get(), &object);
        EXPECT_EQ(object.m_references, 1u);
    }
    EXPECT_EQ(object.m_references, 0u);
}

TEST(Adopt, OfNullIsEmpty) {
    EXPECT_EQ(Adopt<IDispatch>(nullptr), nullptr);
}

TEST(AutomationCall, HandsItsObjectOverWithOneReference) {
    Counted object;
    {
        AutomationObject<Administration> administration{ComPtr<IDispatch>(&object)};
        EXPECT_EQ(object.m_references, 2u);
        {
            const ComPtr<IDispatch> configuration =
                administration.Call<Administration::OpenConfiguration>(L"Pump");
            EXPECT_EQ(object.m_references, 3u);
        }
        EXPECT_EQ(object.m_references, 2u);
    }
    EXPECT_EQ(object.m_references, 1u);
}
