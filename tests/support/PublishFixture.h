// A publication on stand-ins for everything that it calls. Unless a test says otherwise, every call
// succeeds, and what is published is the project "Pump".
#pragma once

#include "components/ComponentIds.h"
#include "components/contracts/Publishing.h"
#include "publish/PublishProject.h"
#include "tests/support/FakeDispatch.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/Isolation.h"
#include "tests/support/RecordingLog.h"
#include "tests/support/TestClasses.h"
#include "tests/support/TestControl.h"

#include <gtest/gtest.h>
#include <ocidl.h>

#include <functional>
#include <memory>
#include <string>

namespace zt::test {

// One of a component's further interfaces; the component's stand-in hands it out.
template <typename Interface>
class FakeFace : public Interface {
  public:
    ~FakeFace() { EXPECT_EQ(m_references, 0) << "references are still held"; }
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--m_references); }

  private:
    LONG m_references = 0;
};

// Reads one setting, "Quality", when it is asked to load itself.
class FakeSettings final : public FakeFace<IPersistPropertyBag> {
  public:
    FakeSettings(CallList& calls, std::string name) : m_calls(calls), m_name(std::move(name)) {}
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitNew() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Load(IPropertyBag* bag, IErrorLog* log) override;
    HRESULT STDMETHODCALLTYPE Save(IPropertyBag* bag, BOOL clearDirty, BOOL saveAll) override;

    HRESULT result = S_OK;

  private:
    CallList& m_calls;
    std::string m_name;
};

class FakeSiteTaker final : public FakeFace<IObjectWithSite> {
  public:
    explicit FakeSiteTaker(CallList& calls) : m_calls(calls) {}
    HRESULT STDMETHODCALLTYPE SetSite(IUnknown* given) override {
        m_calls.push_back(std::string("Exporter.SetSite(") +
                          (given != nullptr ? "object" : "null") + ")");
        site = given;
        return result;
    }
    HRESULT STDMETHODCALLTYPE GetSite(REFIID, void**) override { return E_NOTIMPL; }

    IUnknown* site = nullptr; // borrowed
    HRESULT result = S_OK;

  private:
    CallList& m_calls;
};

// The run's client site; nothing here calls it.
class FakeClientSite final : public FakeFace<IOleClientSite> {
  public:
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }
};

// Sets the thread's error information.
void LeaveErrorDescription(const wchar_t* text);

class PublishTest : public testing::Test {
  protected:
    PublishTest();
    ~PublishTest() override;

    // Publishes and returns the message of the failure that was raised, behind "text: " for
    // a constant text, "string: " for a composed one, "OLE: " for the framework's; "done" when
    // nothing was raised and the result is 0.
    std::wstring Publish();
    // Full path of what is published without a package, as it stands in the call list.
    std::string PublishedPath() const;
    // Stores a setting of the component for the product, with the machine's key.
    void StoreSetting(const wchar_t* component, const wchar_t* text);

    // Every one of the contract's operations succeeds.
    template <typename Contract>
    static void AnswerAll(FakeObject<Contract>& object) {
        AnswerEach(object, static_cast<typename Contract::Operations*>(nullptr));
    }
    // The names that the export handler gives; installs it.
    void GiveNames(const wchar_t* first, const wchar_t* second);

    TemporaryFolder folder;
    RegistryOverride user{HKEY_CURRENT_USER};
    RegistryOverride machine{HKEY_LOCAL_MACHINE};
    CallList calls;

    FakeObject<KernelAdmin> kernel{calls};
    FakeObject<KernelProject> project{calls};
    FakeObject<ExportHandler> exportHandler{calls};
    FakeObject<Exporter> exporter{calls};
    FakeSettings exporterSettings{calls, "Exporter"};
    FakeSiteTaker exporterSite{calls};
    FakeObject<Component3D> component{calls, "KV3D"};
    FakeSettings componentSettings{calls, "KV3D"};
    FakeObject<ArchiveComponent> archive{calls};
    FakeDispatch viewer;
    FakeAutomation<ViewerControl> viewerControl{calls};

    std::unique_ptr<TestClass> exporterClass;
    std::unique_ptr<TestClass> componentClass;
    std::unique_ptr<TestClass> archiveClass;
    std::unique_ptr<TestClass> viewerClass;

    FakeClientSite site;
    CallList logged;
    RecordingLog log{logged};
    Publication publication;

  private:
    template <typename Contract, typename... Operation>
    static void AnswerEach(FakeObject<Contract>& object, std::tuple<Operation...>*) {
        object.template Return<Operation...>(S_OK);
    }
    TestClass::Creation Noted(const char* name, IUnknown* object);
    TestClass::Creation MakeViewer();
};

} // namespace zt::test
