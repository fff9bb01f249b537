#include "tests/support/Isolation.h"
#include "tests/unit/installation/Automation.h"
#include "tests/unit/installation/Kit.h"
#include "tests/unit/installation/TraceCapture.h"

#include "components/ComponentIds.h"
#include "components/contracts/Handlers.h"
#include "installation/handlers/ExportScript.h"
#include "installation/kernel/Scripting.h"
#include "installation/runtime/LateBound.h"

#include <gmock/gmock.h>

#include <fstream>

namespace devinst::test {
namespace {

using Microsoft::WRL::ComPtr;

// The kernel and its open project as a handler sees them, in one.
class ScriptedKernel final : public StandIn {
  public:
    ScriptedKernel() : StandIn("ScriptedKernel") {
        AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ScriptedKernel>());
    }

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override {
        const HRESULT found = FindByContract<KernelScripting>(name, id);
        return SUCCEEDED(found) ? found : FindByContract<ProjectScripting>(name, id);
    }
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override {
        if (id == KernelScripting::CurrentProject::Id && kind == DISPATCH_PROPERTYGET)
            return InvokeByContract<KernelScripting>(*this, id, kind, parameters, result,
                                                     exception);
        return InvokeByContract<ProjectScripting>(*this, id, kind, parameters, result, exception);
    }

    HRESULT On(KernelScripting::CurrentProject, IDispatch** project) {
        if (projectIsOpen) {
            *project = static_cast<IDispatch*>(Identity());
            AddReference();
        }
        return S_OK;
    }
    HRESULT On(ProjectScripting::GetName, BSTR*) { return E_NOTIMPL; }
    HRESULT On(ProjectScripting::SetMetadata, BSTR name, BSTR value) {
        if (!refusal.empty())
            throw ComFailure{E_ACCESSDENIED, refusal};
        metadata += std::wstring(name) + L"=" + value + L";";
        return S_OK;
    }
    HRESULT On(ProjectScripting::GetMetadata, BSTR, BSTR*) { return E_NOTIMPL; }
    HRESULT On(ProjectScripting::GetRevision, BSTR*) { return E_NOTIMPL; }
    HRESULT On(ProjectScripting::GetDocumentPath, BSTR*) { return E_NOTIMPL; }
    HRESULT On(ProjectScripting::GetContent, BSTR*) { return E_NOTIMPL; }
    HRESULT On(ProjectScripting::GetFolder, BSTR*) { return E_NOTIMPL; }
    HRESULT On(ProjectScripting::GetRepresentations, BSTR*) { return E_NOTIMPL; }

    bool projectIsOpen = true;
    std::wstring refusal;
    std::wstring metadata;

  private:
    ~ScriptedKernel() override = default;
};

class SampleHandlers : public testing::Test {
  protected:
    SampleHandlers() : m_kernel(new ScriptedKernel) {}
    ~SampleHandlers() override { m_kernel->ReleaseReference(); }

    IDispatch* Kernel() const { return static_cast<IDispatch*>(m_kernel->Identity()); }
    ComPtr<IDispatch> Create(const std::wstring& progId) const {
        ComPtr<IDispatch> object;
        EXPECT_EQ(m_library.Create(progId, IID_PPV_ARGS(&object)), S_OK);
        return object;
    }
    Outcome Edit(const wchar_t* method) const {
        return Call(Create(L"KVDev.SampleEdit").Get(), method, {_variant_t(Kernel())});
    }
    ULONG References() const {
        Kernel()->AddRef();
        return Kernel()->Release();
    }

    zt::test::RegistryOverride m_registry{HKEY_LOCAL_MACHINE};
    RegisteredLibrary m_library{L"zt-handlers.dll"};
    zt::test::TemporaryFolder m_folder;
    ScriptedKernel* m_kernel;
};

TEST_F(SampleHandlers, TouchChangesTheOpenProjectAndAnswersTrue) {
    const Outcome outcome = Edit(L"Touch");
    EXPECT_EQ(outcome.code, S_OK);
    EXPECT_EQ(outcome.result.vt, VT_BOOL);
    EXPECT_EQ(outcome.result.boolVal, VARIANT_TRUE);
    EXPECT_EQ(m_kernel->metadata, L"EditedBy=KVDev.SampleEdit;");
}

TEST_F(SampleHandlers, TouchFailsWithoutAnOpenProject) {
    m_kernel->projectIsOpen = false;
    const Outcome outcome = Edit(L"Touch");
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.description, L"No project is open.");
}

TEST_F(SampleHandlers, TouchFailsWithTheProjectsOwnDescription) {
    m_kernel->refusal = L"No such metadata.";
    const Outcome outcome = Edit(L"Touch");
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.scode, E_ACCESSDENIED);
    EXPECT_EQ(outcome.description, L"No such metadata.");
}

TEST_F(SampleHandlers, TouchLeavesNoReferenceToTheKernelBehind) {
    Edit(L"Touch");
    EXPECT_EQ(References(), 1u);
}

TEST_F(SampleHandlers, RefuseAnswersFalse) {
    const Outcome outcome = Edit(L"Refuse");
    EXPECT_EQ(outcome.code, S_OK);
    EXPECT_EQ(outcome.result.vt, VT_BOOL);
    EXPECT_EQ(outcome.result.boolVal, VARIANT_FALSE);
}

TEST_F(SampleHandlers, NothingAnswersNoValue) {
    const Outcome outcome = Edit(L"Nothing");
    EXPECT_EQ(outcome.code, S_OK);
    EXPECT_EQ(outcome.result.vt, VT_EMPTY);
}

TEST_F(SampleHandlers, CountAndZeroAnswerNumbers) {
    const Outcome count = Edit(L"Count");
    EXPECT_EQ(count.result.vt, VT_I4);
    EXPECT_EQ(count.result.lVal, 1);
    const Outcome zero = Edit(L"Zero");
    EXPECT_EQ(zero.result.vt, VT_I4);
    EXPECT_EQ(zero.result.lVal, 0);
}

TEST_F(SampleHandlers, RaiseFailsWithADescription) {
    const Outcome outcome = Edit(L"Raise");
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.scode, E_FAIL);
    EXPECT_EQ(outcome.description, L"The sample handler raised this.");
}

TEST_F(SampleHandlers, RaiseSilentlyFailsWithoutADescription) {
    const Outcome outcome = Edit(L"RaiseSilently");
    EXPECT_EQ(outcome.code, DISP_E_EXCEPTION);
    EXPECT_EQ(outcome.description, L"(null)");
}

TEST_F(SampleHandlers, EditHandlerKnowsNoOtherMethod) {
    EXPECT_EQ(IdOf(Create(L"KVDev.SampleEdit").Get(), L"Explode"), DISPID_UNKNOWN);
}

TEST_F(SampleHandlers, KernelIsHeldUntilTheHandlerIsReleased) {
    for (const wchar_t* const progId : {L"KVDev.SequenceNumbers", L"KVDev.Notifications"}) {
        for (const WORD kind : {DISPATCH_PROPERTYPUT, DISPATCH_PROPERTYPUTREF}) {
            ComPtr<IDispatch> handler = Create(progId);
            EXPECT_EQ(
                Invoke(handler.Get(), IdOf(handler.Get(), L"Kernel"), kind, {_variant_t(Kernel())})
                    .code,
                S_OK);
            EXPECT_EQ(References(), 2u);
            handler.Reset();
            EXPECT_EQ(References(), 1u);
        }
    }
}

// ---- export handler ----

class ExportHandlers : public SampleHandlers {
  protected:
    ExportHandlers() {
        EXPECT_EQ(m_library.Create(L"KVDev.Export", IID_ExportHandler,
                                   reinterpret_cast<void**>(m_handler.GetAddressOf())),
                  S_OK);
        m_handler->QueryInterface(IID_ScriptExporter,
                                  reinterpret_cast<void**>(m_exporter.GetAddressOf()));
    }
    HRESULT LoadText(const char* text) {
        const std::wstring path = m_folder.Path(L"a.script");
        std::ofstream(std::filesystem::path(path), std::ios::binary) << text;
        return Load(path);
    }
    HRESULT Load(const std::wstring& path) {
        return zt::ScriptExporter::LoadScript::Call(m_exporter.Get(), _bstr_t(path.c_str()));
    }
    std::wstring Names() {
        _bstr_t first;
        _bstr_t second;
        zt::ExportHandler::GetFirstName::Call(m_handler.Get(), nullptr, first.GetAddress());
        zt::ExportHandler::GetSecondName::Call(m_handler.Get(), nullptr, second.GetAddress());
        return std::wstring(first) + L"/" + std::wstring(second);
    }

    ComPtr<IUnknown> m_handler;
    ComPtr<IUnknown> m_exporter;
};

TEST_F(ExportHandlers, HaveEmptyNamesWithoutAScript) {
    EXPECT_EQ(Names(), L"/");
}

TEST_F(ExportHandlers, HaveTheNamesOfTheirScript) {
    EXPECT_EQ(LoadText("export-script 1\nfirst = One\nsecond = Two\n"), S_OK);
    EXPECT_EQ(Names(), L"One/Two");
}

TEST_F(ExportHandlers, RefuseAMissingScript) {
    EXPECT_EQ(Load(m_folder.Path(L"missing.script")), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(Load(m_folder.Path()), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
}

TEST_F(ExportHandlers, RefuseAMalformedScriptAndKeepTheirNames) {
    LoadText("export-script 1\nfirst = One\nsecond = Two\n");
    EXPECT_EQ(LoadText("export-script 2\nfirst = Three\n"), E_FAIL);
    EXPECT_EQ(Names(), L"One/Two");
}

struct ScriptCase {
    const char* text;
    const wchar_t* names; // null for a malformed script
};

TEST(ExportScripts, AreReadLineByLine) {
    const ScriptCase cases[] = {
        {"export-script 1\nfirst = One\nsecond = Two\n", L"One/Two"},
        {"export-script 1\r\n\r\n# a comment\r\nsecond=Two\r\nfirst=One", L"One/Two"},
        {"export-script 1\nfirst = a = b\n", L"a = b/"},
        {"export-script 1\nfirst =\n", L"/"},
        {"export-script 1\nfirst = \xc3\x9c"
         "bersicht\n",
         L"\u00dcbersicht/"},
        {"export-script 1", L"/"},
        {"", nullptr},
        {"first = One\n", nullptr},
        {"export-script 1\nfirst\n", nullptr},
        {"export-script 1\nthird = Three\n", nullptr},
        {"export-script 1\nfirst = One\nfirst = Two\n", nullptr},
    };
    for (const ScriptCase& known : cases) {
        SCOPED_TRACE(known.text);
        const std::optional<ExportScript> script = ParseExportScript(known.text);
        ASSERT_EQ(script.has_value(), known.names != nullptr);
        if (script) {
            EXPECT_EQ(script->firstName + L"/" + script->secondName, known.names);
        }
    }
}

// ---- the library ----

// Makes two objects of the library and, unless they are forgotten, releases them; then the process
// ends. Its exit code is 7.
void UseLibrary(bool forget) {
    {
        const zt::test::RegistryOverride registry(HKEY_LOCAL_MACHINE);
        const RegisteredLibrary library(L"zt-handlers.dll");
        ComPtr<IDispatch> edit;
        ComPtr<IDispatch> notifications;
        library.Create(L"KVDev.SampleEdit", IID_PPV_ARGS(&edit));
        library.Create(L"KVDev.Notifications", IID_PPV_ARGS(&notifications));
        if (forget) {
            edit.Detach();
            notifications.Detach();
        }
    }
    ExitProcess(7);
}

TEST(HandlerLibraryDeathTest, CountsItsLiveObjectsWhenTheProcessEnds) {
    const TraceCapture trace;
    EXPECT_EXIT(UseLibrary(false), testing::ExitedWithCode(7), "");
    EXPECT_EQ(trace.Last(), "live zt-handlers.dll: 0");
    EXPECT_EXIT(UseLibrary(true), testing::ExitedWithCode(7), "");
    EXPECT_EQ(trace.Last(), "live zt-handlers.dll: Notifications 1, SampleEdit 1");
}

TEST(HandlerLibrary, CreationIsTracedAsAnOperationOfTheClass) {
    const TraceCapture trace;
    const zt::test::RegistryOverride registry(HKEY_LOCAL_MACHINE);
    const RegisteredLibrary library(L"zt-handlers.dll");
    ComPtr<IDispatch> object;
    library.Create(L"KVDev.SampleEdit", IID_PPV_ARGS(&object));
    EXPECT_THAT(trace.Last(), testing::MatchesRegex("SampleEdit CreateInstance .IDispatch. -> "
                                                    "S_OK, SampleEdit#.*"));
}

TEST(HandlerLibrary, RefusesAggregationAndUnknownInterfaces) {
    const zt::test::RegistryOverride registry(HKEY_LOCAL_MACHINE);
    const RegisteredLibrary library(L"zt-handlers.dll");
    ComPtr<IClassFactory> object;
    EXPECT_EQ(library.Create(L"KVDev.SampleEdit", IID_PPV_ARGS(&object)), E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
}

} // namespace
} // namespace devinst::test
