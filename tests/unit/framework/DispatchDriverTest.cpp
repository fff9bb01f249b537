// What COleDispatchDriver holds.
#include "framework/OleDispatchDriver.h"

#include "tests/support/FakeDispatch.h"
#include "tests/support/TestClasses.h"

#include <gtest/gtest.h>

namespace {

using zt::test::FakeDispatch;
using zt::test::TestClass;

TEST(DispatchDriver, ReleasesWhatItTookOver) {
    FakeDispatch object;
    object.AddRef();
    {
        const COleDispatchDriver driver(&object);
        EXPECT_EQ(driver.m_lpDispatch, &object);
        EXPECT_EQ(object.References(), 1);
    }
    EXPECT_EQ(object.References(), 0);
}

TEST(DispatchDriver, DoesNotReleaseWhatItBorrowed) {
    FakeDispatch object;
    object.AddRef();
    { const COleDispatchDriver driver(&object, false); }
    EXPECT_EQ(object.Release(), 0u);
}

TEST(DispatchDriver, ReleasesWhatIsReplaced) {
    FakeDispatch first;
    FakeDispatch second;
    first.AddRef();
    second.AddRef();
    COleDispatchDriver driver(&first);
    driver.AttachDispatch(&second);
    EXPECT_EQ(first.References(), 0);
    driver.AttachDispatch(nullptr);
    EXPECT_EQ(second.References(), 0);
    EXPECT_EQ(driver.m_lpDispatch, nullptr);
}

TEST(DispatchDriver, HandsOverWhatItHeld) {
    FakeDispatch object;
    object.AddRef();
    COleDispatchDriver driver(&object);
    EXPECT_EQ(driver.DetachDispatch(), &object);
    EXPECT_EQ(driver.m_lpDispatch, nullptr);
    EXPECT_EQ(object.Release(), 0u);
}

TEST(DispatchDriver, CreatesTheObjectOfAProgId) {
    FakeDispatch object;
    const TestClass known(L"Zt.Framework.Known", TestClass::Gives(&object));
    COleDispatchDriver driver;
    EXPECT_TRUE(driver.CreateDispatch(L"Zt.Framework.Known"));
    EXPECT_EQ(driver.m_lpDispatch, &object);
    EXPECT_EQ(object.References(), 1);
    driver.ReleaseDispatch();
    EXPECT_EQ(object.References(), 0);
}

TEST(DispatchDriver, IsEmptyAfterACreationThatFailed) {
    const TestClass failing(L"Zt.Framework.Failing", TestClass::Fails(E_ACCESSDENIED));
    const TestClass empty(L"Zt.Framework.Empty", TestClass::GivesNothing());
    for (const wchar_t* progId :
         {L"Zt.Framework.Failing", L"Zt.Framework.Empty", L"Zt.Framework.Unknown", L""}) {
        FakeDispatch earlier;
        earlier.AddRef();
        COleDispatchDriver driver(&earlier);
        EXPECT_FALSE(driver.CreateDispatch(progId));
        EXPECT_EQ(driver.m_lpDispatch, nullptr);
        EXPECT_EQ(earlier.References(), 0);
    }
}

// A component without automation.
class Unscriptable : public FakeDispatch {
  public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        if (iid == IID_IUnknown)
            return FakeDispatch::QueryInterface(iid, object);
        *object = nullptr;
        return E_NOINTERFACE;
    }
};

TEST(DispatchDriver, IsEmptyAfterTheCreationOfAnObjectWithoutAutomation) {
    Unscriptable object;
    const TestClass known(L"Zt.Framework.Unscriptable", TestClass::Gives(&object));
    COleDispatchDriver driver;
    EXPECT_FALSE(driver.CreateDispatch(L"Zt.Framework.Unscriptable"));
    EXPECT_EQ(driver.m_lpDispatch, nullptr);
    EXPECT_EQ(object.References(), 0);
}

// A component that can be run, and has automation only once it runs.
class Runnable : public FakeDispatch, public IRunnableObject {
  public:
    explicit Runnable(HRESULT outcome) : m_outcome(outcome) {}

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid == IID_IRunnableObject)
            *object = static_cast<IRunnableObject*>(this);
        else if (iid == IID_IUnknown || (iid == IID_IDispatch && m_isRunning))
            *object = static_cast<IDispatch*>(this);
        if (*object == nullptr)
            return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return FakeDispatch::AddRef(); }
    ULONG STDMETHODCALLTYPE Release() override { return FakeDispatch::Release(); }
    HRESULT STDMETHODCALLTYPE GetRunningClass(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Run(IBindCtx* context) override {
        EXPECT_EQ(context, nullptr);
        m_isRunning = SUCCEEDED(m_outcome);
        return m_outcome;
    }
    BOOL STDMETHODCALLTYPE IsRunning() override { return m_isRunning; }
    HRESULT STDMETHODCALLTYPE LockRunning(BOOL, BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetContainedObject(BOOL) override { return E_NOTIMPL; }

  private:
    HRESULT m_outcome;
    bool m_isRunning = false;
};

TEST(DispatchDriver, RunsAnObjectBeforeItAsksForAutomation) {
    Runnable object(S_OK);
    const TestClass known(L"Zt.Framework.Runnable",
                          TestClass::Gives(static_cast<IDispatch*>(&object)));
    COleDispatchDriver driver;
    EXPECT_TRUE(driver.CreateDispatch(L"Zt.Framework.Runnable"));
    EXPECT_EQ(driver.m_lpDispatch, static_cast<IDispatch*>(&object));
    EXPECT_EQ(object.References(), 1);
}

TEST(DispatchDriver, IsEmptyAfterTheCreationOfAnObjectThatDoesNotRun) {
    Runnable object(E_OUTOFMEMORY);
    const TestClass known(L"Zt.Framework.NotRunning",
                          TestClass::Gives(static_cast<IDispatch*>(&object)));
    COleDispatchDriver driver;
    EXPECT_FALSE(driver.CreateDispatch(L"Zt.Framework.NotRunning"));
    EXPECT_EQ(driver.m_lpDispatch, nullptr);
    EXPECT_EQ(object.References(), 0);
}

} // namespace
