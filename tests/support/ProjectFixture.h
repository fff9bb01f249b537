// A run of the pipeline on stand-ins for everything that it calls. Unless a test says otherwise,
// every call succeeds on the project "Pump" of the exchange folder D:\ex.
#pragma once

#include "project/Pipeline.h"
#include "project/StatusDispSite.h"
#include "tests/support/FakeDispatch.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/Isolation.h"
#include "tests/support/RecordingLog.h"
#include "tests/support/TestClasses.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace zt::test {

// The kernel's face for its host.
class FakeSiteHolder final : public IObjectWithSite {
  public:
    explicit FakeSiteHolder(CallList& calls) : m_calls(calls) {}
    ~FakeSiteHolder() { EXPECT_EQ(m_references, 0) << "references are still held"; }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void** object) override {
        *object = nullptr;
        return E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return static_cast<ULONG>(++m_references); }
    ULONG STDMETHODCALLTYPE Release() override { return static_cast<ULONG>(--m_references); }
    HRESULT STDMETHODCALLTYPE SetSite(IUnknown* given) override {
        m_calls.push_back("KernelAdmin.SetSite(object)");
        site = given;
        return result;
    }
    HRESULT STDMETHODCALLTYPE GetSite(REFIID, void** object) override {
        *object = nullptr;
        return E_NOTIMPL;
    }

    LONG References() const { return m_references; }

    ComPtr<IUnknown> site;
    HRESULT result = S_OK;

  private:
    CallList& m_calls;
    LONG m_references = 0;
};

// Makes this program, with its version resource, the installation's executable: "Zeltor Test
// Edition", product version "1.4 SR 2", file version "1, 4, 0, 12".
void InstallThisProgram(const RegistryOverride& machine);

// A two-dimensional array of texts with the elements {0, 0} and {0, 1}.
_variant_t TextArray(const wchar_t* first, const wchar_t* second);

// The pipeline's services, each answered by the test.
class FakeServices final : public PipelineServices {
  public:
    virtual ~FakeServices() = default;

    HRESULT LoadConfiguration(const wchar_t* path) override { return loadConfiguration(path); }
    bool LoadSpecification(const wchar_t* name, const wchar_t* version) override {
        return loadSpecification(name, version);
    }
    bool UpdateProjectDocument() override { return updateProjectDocument(); }
    HRESULT PublishProject(const wchar_t* name) override { return publishProject(name); }

    std::function<HRESULT(const wchar_t* path)> loadConfiguration;
    std::function<bool(const wchar_t* name, const wchar_t* version)> loadSpecification;
    std::function<bool()> updateProjectDocument;
    std::function<HRESULT(const wchar_t* name)> publishProject;
};

class ProjectTest : public testing::Test {
  protected:
    ProjectTest();
    ~ProjectTest() override;

    // Runs the whole pipeline and returns the message of the failure that it raised, which is empty
    // when it raised none.
    std::wstring Run();

    // How many of the calls begin with that text.
    int Count(const std::string& call) const;

    template <typename Operation, typename Contract, typename Answer>
    void On(FakeObject<Contract>& object, Answer answer) {
        object.template On<Operation>(answer);
    }
    template <typename Operation, typename Contract>
    void Returns(FakeObject<Contract>& object, HRESULT result) {
        On<Operation>(object, [result](auto...) { return result; });
    }
    template <typename Operation, typename Contract>
    void GivesText(FakeObject<Contract>& object, const wchar_t* text) {
        On<Operation>(object, [text](BSTR* place) {
            *place = SysAllocString(text);
            return S_OK;
        });
    }
    template <typename Operation, typename Contract>
    void On(FakeAutomation<Contract>& object, InvokeAnswer answer) {
        object.template On<Operation>(answer);
    }

    RegistryOverride registry{HKEY_LOCAL_MACHINE};
    // All calls in their order and, between them, the lines of the log.
    CallList calls;
    RecordingLog log{calls};

    FakeSiteHolder siteHolder{calls};
    FakeObject<KernelAdmin> admin{calls};
    FakeObject<KernelProject> project{calls};
    FakeObject<MetadataCollection> metadata{calls};
    FakeObject<MetadataItem> item{calls};
    FakeDispatch declaration;
    FakeDispatch extracted;
    FakeDispatch exported;
    FakeAutomation<Archive> source{calls, "Source"};
    FakeAutomation<Archive> target{calls, "Target"};
    FakeAutomation<Configuration> configuration{calls};
    FakeAutomation<Administration> administration{calls};
    std::unique_ptr<TestClass> kernelClass;
    std::unique_ptr<TestClass> administrationClass;

    ProjectRequest request;
    MetadataMap& wanted = request.metadata;
    FakeServices services;
    // What the run leaves. Last: it goes first, and with it the references.
    ComPtr<CStatusDispSite> statusSite;
    ComPtr<KernelAdmin> openKernel;
    ComPtr<KernelProject> openProject;
    AutomationObject<Configuration> openConfiguration;
    _bstr_t importedProjectId;
    std::wstring documentFolder;
    _bstr_t language;
    _bstr_t documentHandler;
    SpecificationClass specificationClass = SpecificationClass::Ipc;

  private:
    void AnswerForTheKernel();
    void AnswerForTheProject();
    void AnswerForTheAdministration();
    void AnswerForTheServices();
};

} // namespace zt::test
