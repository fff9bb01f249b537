#include "tests/support/UpdateFixture.h"

namespace zt::test {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

// ---- the document itself ----

TEST_F(DocumentUpdate, EndsWithoutTheEditorWhereNoDocumentCanBeGenerated) {
    m_documentName = L"";
    m_project.Return<KernelProject::GenerateDocument>(E_FAIL);
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
    EXPECT_THAT(LogLines(), ElementsAre("Failed to generate document"));
    EXPECT_THAT(m_calls, ElementsAre("project.GetDocumentName()",
                                     "project.GenerateDocument(\"handler.xsl\")",
                                     "project.GetDocumentName()"));
}

TEST_F(DocumentUpdate, LooksAtTheNameAndNotAtTheResultOfTheGeneration) {
    m_documentName = L"";
    m_project.On<KernelProject::GenerateDocument>([this](BSTR) {
        m_documentName = L"Generated.xml";
        return E_FAIL;
    });
    EXPECT_TRUE(Update());
    EXPECT_THAT(LogLines(), ElementsAre("Document 'Generated.xml' was generated in the project",
                                        "Updating document 'Generated.xml'",
                                        "Document in the project was updated"));
}

TEST_F(DocumentUpdate, NotesAGeneratedDocumentAsAChangeThoughTheEditorHasNone) {
    m_documentName = L"";
    m_project.On<KernelProject::GenerateDocument>([this](BSTR) {
        m_documentName = L"Generated.xml";
        return S_OK;
    });
    m_control.Reads(L"cmdSave", _variant_t(false));
    EXPECT_TRUE(Update());
    EXPECT_THAT(LogLines(), ElementsAre("Document 'Generated.xml' was generated in the project",
                                        "Updating document 'Generated.xml'",
                                        "Document is up-to-date and has not been modified"));
}

TEST_F(DocumentUpdate, GeneratesNothingWhereTheProjectHasADocument) {
    EXPECT_TRUE(Update());
    EXPECT_THAT(m_calls, Not(Contains(HasSubstr("GenerateDocument"))));
}

TEST_F(DocumentUpdate, TakesANameThatCannotBeReadForNone) {
    m_project.Return<KernelProject::GetDocumentName>(E_FAIL);
    m_project.Return<KernelProject::GenerateDocument>(S_OK);
    m_documentHandler = static_cast<const wchar_t*>(nullptr);
    EXPECT_FALSE(Update());
    EXPECT_THAT(LogLines(), ElementsAre("Failed to generate document"));
    EXPECT_THAT(Calls(), Contains("project.GenerateDocument(null)"));
}

// ---- the update's calls ----

TEST_F(DocumentUpdate, AsksTheProjectAndTheEditorInThisOrder) {
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
    EXPECT_THAT(m_calls,
                ElementsAre("project.GetDocumentName()", "GetMiscStatus", "SetClientSite",
                            "SetExtent", "Activate", "control.find Kernel",
                            "control.putref Kernel object", "control.find cmdHasDocument",
                            "control.get cmdHasDocument", "control.find cmdSave",
                            "control.get cmdSave", "control.find XMED", "control.get XMED",
                            "editor.find Document", "editor.get Document", "document.find Host",
                            "document.get Host", "host.find Run", "host.call Run \"OnSaveToCMS\"",
                            "control.find cmdSave", "control.put cmdSave true", "Deactivate",
                            "Close", "ClearClientSite", "gone"));
    EXPECT_THAT(LogLines(), ElementsAre("Updating document 'Manual.xml'",
                                        "Document in the project was updated"));
}

TEST_F(DocumentUpdate, RemovesTheChangeMarksFirstForANewRevision) {
    m_newRevision = true;
    EXPECT_TRUE(Update());
    CallList commands;
    for (const std::string& call : m_calls)
        if (call.starts_with("host."))
            commands.push_back(call);
    EXPECT_THAT(commands, ElementsAre("host.find Run", "host.call Run \"cmd_removeChangeMarks\"",
                                      "host.find Run", "host.call Run \"OnSaveToCMS\""));
}

TEST_F(DocumentUpdate, HostsTheControlInAnInvisibleWindowOfSixteenPixels) {
    m_control.On(L"cmdHasDocument", DISPATCH_PROPERTYGET,
                 [](const Invocation&, VARIANT* result, EXCEPINFO*) {
                     ComPtr<IOleInPlaceSite> site;
                     HWND host = nullptr;
                     EXPECT_EQ(ControlRecord::Get().site->QueryInterface(IID_PPV_ARGS(&site)),
                               S_OK);
                     EXPECT_EQ(site->GetWindow(&host), S_OK);
                     EXPECT_FALSE(IsWindowVisible(host));
                     // The system adds its own bit for windows that clip their siblings.
                     EXPECT_EQ(GetWindowLongW(host, GWL_STYLE) & ~WS_CLIPSIBLINGS,
                               static_cast<LONG>(0x80000000));
                     EXPECT_EQ(GetWindowLongW(host, GWL_EXSTYLE), 0);
                     EXPECT_EQ(GetClassLongW(host, GCL_STYLE), 0u);
                     EXPECT_EQ(GetWindowTextLengthW(host), 0);
                     EXPECT_EQ(GetWindow(host, GW_OWNER), nullptr);
                     RECT rect = {};
                     GetWindowRect(host, &rect);
                     EXPECT_EQ(rect.left, 0);
                     EXPECT_EQ(rect.top, 0);
                     EXPECT_EQ(rect.right, 16);
                     EXPECT_EQ(rect.bottom, 16);
                     const HWND control = GetWindow(host, GW_CHILD);
                     EXPECT_EQ(GetDlgCtrlID(control), 0);
                     EXPECT_EQ(GetWindowLongW(control, GWL_STYLE) & 0x50000000, 0x50000000);
                     result->vt = VT_BOOL;
                     result->boolVal = VARIANT_TRUE;
                     return S_OK;
                 });
    EXPECT_TRUE(Update());
    const RECT at = ControlRecord::Get().activatedAt;
    EXPECT_EQ(at.left, 0);
    EXPECT_EQ(at.top, 0);
    EXPECT_EQ(at.right, 16);
    EXPECT_EQ(at.bottom, 16);
}

TEST_F(DocumentUpdate, WorksWithAControlThatHasNoWindow) {
    for (const Activation activation :
         {Activation::Windowless, Activation::Never, Activation::Refused}) {
        m_traits.activation = activation;
        EXPECT_TRUE(Update());
        EXPECT_EQ(m_failure, std::nullopt);
    }
}

// ---- the kernel ----

TEST_F(DocumentUpdate, GivesTheKernelWithAReferenceOfItsOwn) {
    const LONG before = m_admin.References();
    ComPtr<IDispatch> kept;
    m_control.On(L"Kernel", DISPATCH_PROPERTYPUTREF,
                 [&](const Invocation& call, VARIANT*, EXCEPINFO*) {
                     EXPECT_EQ(call.arguments[0].vt, VT_DISPATCH);
                     EXPECT_EQ(call.arguments[0].pdispVal, m_admin.Get());
                     EXPECT_EQ(m_admin.References(), before + 2); // the argument's and the record's
                     kept = call.arguments[0].pdispVal;
                     return S_OK;
                 });
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_admin.References(), before + 1);
}

TEST_F(DocumentUpdate, PutsTheKernelPlainlyWhereItIsNotTakenByReference) {
    m_control.Returns(L"Kernel", DISPATCH_PROPERTYPUTREF, DISP_E_MEMBERNOTFOUND);
    m_control.Returns(L"Kernel", DISPATCH_PROPERTYPUT, S_OK);
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
    EXPECT_THAT(m_calls, AllOf(Contains("control.putref Kernel object"),
                               Contains("control.put Kernel object")));
}

constexpr wchar_t NotInitialised[] = L"ERROR initializing KVXMed";

TEST_F(DocumentUpdate, FailsWhereTheControlTakesNoKernel) {
    m_control.Returns(L"Kernel", DISPATCH_PROPERTYPUTREF, E_FAIL);
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, NotInitialised);
    m_control.Forget(L"Kernel");
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, NotInitialised);
    EXPECT_THAT(m_calls, Not(Contains(HasSubstr("cmdHasDocument"))));
}

TEST_F(DocumentUpdate, FailsWhereTheControlCannotBeCreated) {
    m_traits.creation = E_OUTOFMEMORY;
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, NotInitialised);
    EXPECT_THAT(LogLines(), ElementsAre("Updating document 'Manual.xml'"));
}

TEST_F(DocumentUpdate, FailsWhereTheControlCannotBeHosted) {
    m_traits.isOleObject = false;
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, NotInitialised);
}

TEST_F(DocumentUpdate, FailsWhereTheControlHasNoAutomation) {
    m_traits.automation = nullptr;
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, NotInitialised);
}

// ---- is there a document? ----

constexpr wchar_t NotLoaded[] =
    L"Error updating document - document could not be loaded into XMED. It can be invalid.";

TEST_F(DocumentUpdate, FailsWhereTheEditorHasLoadedNothing) {
    for (const _variant_t& value : {_variant_t(false), _variant_t(-1L), _variant_t(L"true"),
                                    _variant_t(), _variant_t(static_cast<short>(-1))}) {
        m_failure.reset();
        m_control.Reads(L"cmdHasDocument", value);
        EXPECT_FALSE(Update());
        EXPECT_EQ(m_failure, NotLoaded);
    }
    EXPECT_THAT(m_calls, Not(Contains(HasSubstr("cmdSave"))));
}

TEST_F(DocumentUpdate, TakesAnyBooleanButZeroForTrue) {
    VARIANT one = {};
    one.vt = VT_BOOL;
    one.boolVal = 1;
    m_control.Reads(L"cmdHasDocument", one);
    m_control.Reads(L"cmdSave", one);
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
}

TEST_F(DocumentUpdate, AcceptsAControlThatCannotReportWhetherItHasADocument) {
    m_control.Forget(L"cmdHasDocument");
    EXPECT_TRUE(Update());
    EXPECT_THAT(m_calls, Not(Contains("control.get cmdHasDocument")));
}

TEST_F(DocumentUpdate, AcceptsAControlThatFailsToReportWhetherItHasADocument) {
    m_control.Returns(L"cmdHasDocument", DISPATCH_PROPERTYGET, DISP_E_EXCEPTION);
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
}

// ---- are there changes? ----

TEST_F(DocumentUpdate, LeavesADocumentAloneThatHasNoUnsavedChanges) {
    for (const _variant_t& value : {_variant_t(false), _variant_t(-1L), _variant_t()}) {
        m_calls.clear();
        m_control.Reads(L"cmdSave", value);
        EXPECT_FALSE(Update());
        EXPECT_EQ(m_failure, std::nullopt);
        EXPECT_THAT(m_calls, AllOf(Not(Contains(HasSubstr("XMED"))),
                                   Not(Contains(HasSubstr("control.put cmdSave")))));
    }
    const std::vector<std::string> once = {"Updating document 'Manual.xml'",
                                           "Document is up-to-date and has not been modified"};
    EXPECT_THAT(LogLines(), ElementsAre(once[0], once[1], once[0], once[1], once[0], once[1]));
}

TEST_F(DocumentUpdate, LeavesADocumentAloneWhoseChangesCannotBeAskedFor) {
    m_control.Returns(L"cmdSave", DISPATCH_PROPERTYGET, E_FAIL);
    EXPECT_FALSE(Update());
    m_control.Forget(L"cmdSave");
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
    EXPECT_THAT(m_calls, Not(Contains(HasSubstr("put cmdSave"))));
}

// ---- the host's commands ----

TEST_F(DocumentUpdate, SavesWithoutTheCommandsWhereAMemberOfTheChainIsMissing) {
    const struct {
        FakeDispatch& object;
        const wchar_t* name;
        const char* next;
    } links[] = {{m_document, L"Host", "host."},
                 {m_editor, L"Document", "document."},
                 {m_control, L"XMED", "editor."}};
    for (const auto& link : links) {
        m_calls.clear();
        link.object.Forget(link.name);
        EXPECT_TRUE(Update());
        EXPECT_EQ(m_failure, std::nullopt);
        EXPECT_THAT(m_calls, AllOf(Contains("control.put cmdSave true"),
                                   Not(Contains(testing::StartsWith(link.next)))));
    }
}

TEST_F(DocumentUpdate, SavesWithoutTheCommandsWhereALinkIsNoObject) {
    m_document.Reads(L"Host", _variant_t(static_cast<IUnknown*>(&m_host)));
    EXPECT_TRUE(Update());
    EXPECT_THAT(m_calls,
                AllOf(Contains("control.put cmdSave true"), Not(Contains(HasSubstr("host.")))));
}

TEST_F(DocumentUpdate, SavesWithoutTheCommandsWhereALinkIsNull) {
    m_editor.Reads(L"Document", _variant_t(static_cast<IDispatch*>(nullptr)));
    EXPECT_TRUE(Update());
    EXPECT_THAT(m_calls,
                AllOf(Contains("control.put cmdSave true"), Not(Contains(HasSubstr("document.")))));
}

TEST_F(DocumentUpdate, IgnoresTheCommandsResults) {
    m_newRevision = true;
    m_host.Returns(L"Run", DISPATCH_METHOD, DISP_E_EXCEPTION);
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_failure, std::nullopt);
    EXPECT_THAT(m_calls, AllOf(Contains("host.call Run \"OnSaveToCMS\""),
                               Contains("control.put cmdSave true")));
    m_host.Forget(L"Run");
    EXPECT_TRUE(Update());
}

// ---- saving ----

TEST_F(DocumentUpdate, FailsWhereTheDocumentCannotBeSaved) {
    m_control.Returns(L"cmdSave", DISPATCH_PROPERTYPUT, E_ACCESSDENIED);
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, L"Error updating document");
    EXPECT_THAT(LogLines(), ElementsAre("Updating document 'Manual.xml'"));
    EXPECT_THAT(m_calls, Not(Contains("control.putref cmdSave true")));
}

TEST_F(DocumentUpdate, FailsWhereTheSaveIsNotFoundAnyMore) {
    m_control.On(L"cmdSave", DISPATCH_PROPERTYGET,
                 [this](const Invocation&, VARIANT* result, EXCEPINFO*) {
                     m_control.Forget(L"cmdSave");
                     *result = _variant_t(true).Detach();
                     return S_OK;
                 });
    EXPECT_FALSE(Update());
    EXPECT_EQ(m_failure, L"Error updating document");
}

TEST_F(DocumentUpdate, TearsTheControlDownWhereItFails) {
    m_control.Returns(L"cmdSave", DISPATCH_PROPERTYPUT, E_FAIL);
    EXPECT_FALSE(Update());
    const CallList end(m_calls.end() - 4, m_calls.end());
    EXPECT_THAT(end, ElementsAre("Deactivate", "Close", "ClearClientSite", "gone"));
}

TEST_F(DocumentUpdate, ReleasesTheChainBeforeTheControl) {
    m_control.On(L"cmdSave", DISPATCH_PROPERTYPUT, [this](const Invocation&, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(m_host.References(), 2);
        return S_OK;
    });
    EXPECT_TRUE(Update());
    EXPECT_EQ(m_editor.References(), 1); // the property's own value
    EXPECT_EQ(m_document.References(), 1);
    EXPECT_EQ(m_host.References(), 1);
}

TEST_F(DocumentUpdate, ReportsAValueThatCannotBeCleared) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_I4, 0, 1);
    m_control.On(L"cmdSave", DISPATCH_PROPERTYGET,
                 [array](const Invocation&, VARIANT* result, EXCEPINFO*) {
                     result->vt = VT_ARRAY | VT_I4;
                     result->parray = array;
                     return SafeArrayLock(array);
                 });
    SCODE raised = S_OK;
    try {
        Update();
    } catch (COleException* exception) {
        raised = exception->m_sc;
        exception->Delete();
    }
    EXPECT_EQ(raised, DISP_E_ARRAYISLOCKED);
    EXPECT_THAT(LogLines(), ElementsAre("Updating document 'Manual.xml'",
                                        "Document is up-to-date and has not been modified"));
    SafeArrayUnlock(array);
    SafeArrayDestroy(array);
}

} // namespace
} // namespace zt::test
