// A run of the pipeline on stand-ins for everything that it calls. Unless a test says otherwise,
// every call succeeds on the project "Pump" of the exchange folder D:\ex.
#pragma once

#include "app/ZTInvisible.h"
#include "project/Pipeline.h"
#include "project/StatusDispSite.h"
#include "tests/support/FakeDispatch.h"
#include "tests/support/FakeKernel.h"
#include "tests/support/Isolation.h"
#include "tests/support/TestClasses.h"

#include <gtest/gtest.h>

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

class ProjectTest : public testing::Test {
  protected:
    ProjectTest();
    ~ProjectTest() override;

    // Runs the whole pipeline and returns the message of the failure that it raised, which is empty
    // when it raised none; afterwards, Trace tells what happened.
    std::wstring Run();

    // All calls in their order and, between them, the lines of the log, as 'log: text'.
    const CallList& Trace();
    // The lines of the log alone.
    std::vector<std::string> LogLines();
    // How many of the calls begin with that text.
    int Count(const std::string& call);

    // The operation's answer; what the log holds at the time of the call is noted before the call.
    template <typename Operation, typename Contract, typename Answer>
    void On(FakeObject<Contract>& object, Answer answer) {
        object.template On<Operation>([this, answer](auto... arguments) {
            NoteLog(1);
            return answer(arguments...);
        });
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
        object.template On<Operation>(
            [this, answer](const Invocation& call, VARIANT* result, EXCEPINFO* info) {
                NoteLog(1);
                return answer(call, result, info);
            });
    }
    // Notes a call on something that is no stand-in of a contract.
    void Note(const std::string& call) {
        NoteLog(0);
        calls.push_back(call);
    }

    TemporaryFolder folder;
    RegistryOverride registry{HKEY_LOCAL_MACHINE};
    CallList calls;

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

    MetadataMap wanted;
    ProjectRequest request{L"Pump", L"", L"", L"", wanted, L""};
    PipelineServices services;
    // Last: it goes first, and with it the references that the run left.
    CZTInvisible app;

  private:
    void AnswerForTheKernel();
    void AnswerForTheProject();
    void AnswerForTheAdministration();
    void AnswerForTheServices();
    // Puts the log's new lines before the last calls of the list.
    void NoteLog(std::size_t callsAfter);

    std::size_t m_notedLog = 0;
};

} // namespace zt::test
