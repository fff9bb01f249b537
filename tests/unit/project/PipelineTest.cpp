#include "tests/support/ProjectFixture.h"

#include "framework/WinApp.h"

namespace zt::test {
namespace {

using testing::ElementsAreArray;

using Pipeline = ProjectTest;

constexpr HRESULT SomeFailure = static_cast<HRESULT>(0x80045678);

const std::vector<std::string> UpToTheLoadedProject = {
    "log: Processing project 'Pump'",
    "create the kernel admin",
    "KernelAdmin.SetSite(object)",
    "KernelAdmin.PutClientName(\"ZeltorAuthor_Invisible\")",
    "create KV.Admin",
    "Administration.OpenConfiguration(\"Pump\")",
    "Configuration.ClientName(\"ZeltorAuthor_Invisible\")",
    "Configuration.Open()",
    "Configuration.ConfigurationFile()",
    "load the configuration C:\\kv\\kv.cfg",
    "Administration.OpenArchive(\"D:\\ex\\Pump.kvp\", 2)",
    "Source.Projects()",
    "Configuration.WorkFolder()",
    "Source.ExtractProject(\"Zipped Pump\", \"C:\\work\\Representations\")",
    "Configuration.ImportProject(object)",
    "Configuration.ImportedProjects()",
    "KernelAdmin.OpenProject(-1, \"id 42/new/rev 3\")",
    "KernelProject.GetSpecificationName()",
    "KernelProject.GetSpecificationVersion()",
    "KernelProject.GetLanguage()",
    "load the specification Pumps, 12",
    "log: Specification 'Pumps', v.12 loaded",
    "KernelProject.PutLanguage(\"en\")",
    "KernelAdmin.SelectProduct(13)",
    "KernelProject.Load(0)",
    "log: Project loaded by Zeltor Test Edition v.1.4.0.12",
};

const std::vector<std::string> Saving = {
    "KernelAdmin.SetSaveMode(1)",
    "Administration.OpenArchive(\"D:\\ex\\Pump.kvp\", 0)",
    "KernelProject.GetConfigurationKey()",
    "KernelProject.GetStoredName()",
    "Configuration.ExportProject(\"key 7\", -1)",
    "Configuration.WorkFolder()",
    "Target.AddProject(object, \"Stored Pump\", \"C:\\work\\Representations\")",
    "log: Project saved to KVP file",
};

const std::string Success = "log: SUCCESS: Project 'Pump' successfully processed";

std::vector<std::string> Joined(const std::vector<std::vector<std::string>>& parts) {
    std::vector<std::string> all;
    for (const std::vector<std::string>& part : parts)
        all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST_F(Pipeline, DoesEveryStepOfAFullRunInItsOrder) {
    wanted[L"Title"] = {L"Pump 3000", true};
    wanted[L"Author"] = {L"Jo", false};
    request.newProjectName = L"Pump 3000";
    request.editProgId = L"ZtTest.Handler";
    request.editMethod = L"Fix";
    request.documentPath = L"C:\\docs\\manual.xml";
    documentHandler = L"manual";
    request.updateDocument = true;
    request.newRevision = true;
    request.publish = true;
    FakeDispatch handler;
    handler.names[L"Fix"] = 5;
    handler.answer = [&](const Invocation&, VARIANT* result, EXCEPINFO*) {
        calls.push_back("call the edit handler");
        *result = _variant_t(true).Detach();
        return S_OK;
    };
    const TestClass handlerClass(L"ZtTest.Handler", TestClass::Gives(&handler));

    EXPECT_EQ(Run(), L"");
    const std::vector<std::string> changes = {
        "KernelProject.GetMetadata()",
        "KernelProject.GetDeclaration(\"Author\")",
        "MetadataCollection.FindItem(object)",
        "MetadataItem.GetValue()",
        "MetadataItem.SetValue(\"Jo\")",
        "log: Value of metadata 'Author' set to 'Jo'",
        "KernelProject.GetDeclaration(\"Title\")",
        "MetadataCollection.FindItem(object)",
        "MetadataItem.GetValue()",
        "MetadataItem.SetValue(\"Pump 3000\")",
        "log: Value of metadata 'Title' set to 'Pump 3000'",
        "KernelProject.Rename(\"Pump 3000\")",
        "log: Project name changed to 'Pump 3000'",
        "call the edit handler",
        "log: Edit handler (ProgID: 'ZtTest.Handler', Method: 'Fix') succeeded",
        "KernelProject.AttachDocument(\"C:\\docs\\manual.xml\", \"manual\")",
        "log: Document 'C:\\docs\\manual.xml' attached to the project",
        "update the document",
        "KernelProject.StartNewRevision()",
        "log: New revision of the project started",
    };
    EXPECT_THAT(calls, ElementsAreArray(Joined(
                           {UpToTheLoadedProject, changes, Saving, {"publish Pump", Success}})));
}

TEST_F(Pipeline, SavesNothingWithoutAChange) {
    EXPECT_EQ(Run(), L"");
    EXPECT_THAT(calls, ElementsAreArray(Joined({UpToTheLoadedProject, {Success}})));
}

TEST_F(Pipeline, PublishesAlsoWithoutAChange) {
    request.publish = true;
    EXPECT_EQ(Run(), L"");
    EXPECT_THAT(calls, ElementsAreArray(Joined({UpToTheLoadedProject, {"publish Pump", Success}})));
}

TEST_F(Pipeline, StartsSavesAndPublishesANewRevisionWithoutAnyOtherChange) {
    request.newRevision = true;
    request.publish = true;
    EXPECT_EQ(Run(), L"");
    const std::vector<std::string> revision = {"KernelProject.StartNewRevision()",
                                               "log: New revision of the project started"};
    EXPECT_THAT(calls, ElementsAreArray(Joined(
                           {UpToTheLoadedProject, revision, Saving, {"publish Pump", Success}})));
}

TEST_F(Pipeline, SavesTheRevisionAlsoWhereStartingItFails) {
    request.newRevision = true;
    Returns<KernelProject::StartNewRevision>(project, SomeFailure);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("log: New revision of the project started"), 1);
    EXPECT_EQ(Count("log: Project saved to KVP file"), 1);
}

TEST_F(Pipeline, SavesADocumentUpdateThatChangedTheProject) {
    request.updateDocument = true;
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("update the document"), 1);
    EXPECT_EQ(Count("log: Project saved"), 1);
}

TEST_F(Pipeline, SavesNothingAfterADocumentUpdateWithoutAChange) {
    request.updateDocument = true;
    services.updateProjectDocument = []() { return false; };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelAdmin.SetSaveMode"), 0);
}

TEST_F(Pipeline, SavesAnEarlierChangeAfterADocumentUpdateWithoutOne) {
    request.newProjectName = L"New";
    request.updateDocument = true;
    services.updateProjectDocument = []() { return false; };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("log: Project saved"), 1);
}

TEST_F(Pipeline, EndsWithTheTextOfAFailingDocumentUpdate) {
    request.updateDocument = true;
    request.publish = true;
    services.updateProjectDocument = []() -> bool { throw L"Error updating document"; };
    EXPECT_EQ(Run(), L"Error updating document");
    EXPECT_EQ(Count("publish"), 0);
    EXPECT_EQ(Count("KernelAdmin.SetSaveMode"), 0);
}

TEST_F(Pipeline, FailsWherePublishingReturnsAFailure) {
    request.publish = true;
    services.publishProject = [](const wchar_t*) { return SomeFailure; };
    EXPECT_EQ(Run(), L"Error publishing project");
    EXPECT_EQ(Count(Success), 0);
}

TEST_F(Pipeline, EndsWithTheTextOfAFailingPublication) {
    request.publish = true;
    services.publishProject = [](const wchar_t*) -> HRESULT { throw L"No axes"; };
    EXPECT_EQ(Run(), L"No axes");
}

TEST_F(Pipeline, AcceptsEverySuccessCodeOfPublishing) {
    request.publish = true;
    services.publishProject = [](const wchar_t*) { return S_FALSE; };
    EXPECT_EQ(Run(), L"");
}

// ---- what lives how long ----

TEST_F(Pipeline, LeavesWhatTheShutDownNeedsOnTheRunAndNothingElse) {
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(openKernel.Get(), admin.Get());
    EXPECT_EQ(openProject.Get(), project.Get());
    EXPECT_EQ(openConfiguration.m_lpDispatch, &configuration);
    EXPECT_NE(statusSite, nullptr);
    EXPECT_EQ(admin.References(), 1);
    EXPECT_EQ(project.References(), 1);
    EXPECT_EQ(administration.References(), 0);
    EXPECT_EQ(siteHolder.References(), 0);
    EXPECT_EQ(source.References(), 0);
}

TEST_F(Pipeline, HoldsTheKernelsSiteInterfaceAndTheAdministrationToTheEnd) {
    request.publish = true;
    services.publishProject = [this](const wchar_t*) {
        EXPECT_EQ(siteHolder.References(), 1);
        EXPECT_EQ(administration.References(), 1);
        return S_OK;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(siteHolder.References(), 0);
}

TEST_F(Pipeline, ReleasesTheSourceArchiveBeforeItAsksWhatWasImported) {
    On<Configuration::ImportedProjects>(configuration,
                                        [this](const Invocation&, VARIANT* result, EXCEPINFO*) {
                                            EXPECT_EQ(source.References(), 0);
                                            *result = TextArray(L"rev 3", L"id 42").Detach();
                                            return S_OK;
                                        });
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("Configuration.ImportedProjects"), 1);
}

TEST_F(Pipeline, ReleasesTheNewArchiveBeforeItPublishes) {
    request.newRevision = true;
    request.publish = true;
    services.publishProject = [this](const wchar_t*) {
        EXPECT_EQ(target.References(), 0);
        calls.push_back("publish");
        return S_OK;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("publish"), 1);
}

// ---- wait cursor ----

HCURSOR SystemCursor(const wchar_t* name) {
    return LoadCursorW(nullptr, name);
}

TEST_F(Pipeline, ShowsTheWaitCursorUntilItReturns) {
    const HCURSOR before = SystemCursor(IDC_CROSS);
    SetCursor(before);
    request.publish = true;
    HCURSOR first = nullptr;
    HCURSOR last = nullptr;
    services.loadConfiguration = [&](const wchar_t*) {
        first = GetCursor();
        return S_OK;
    };
    services.publishProject = [&](const wchar_t*) {
        last = GetCursor();
        return S_OK;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(first, SystemCursor(IDC_WAIT));
    EXPECT_EQ(last, SystemCursor(IDC_WAIT));
    EXPECT_EQ(GetCursor(), before);
}

TEST_F(Pipeline, ShowsTheWaitCursorAgainAfterTheKernelLoadedTheProject) {
    request.publish = true;
    On<KernelProject::Load>(project, [](LONG) {
        SetCursor(SystemCursor(IDC_ARROW));
        return S_OK;
    });
    HCURSOR later = nullptr;
    services.publishProject = [&](const wchar_t*) {
        later = GetCursor();
        return S_OK;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(later, SystemCursor(IDC_WAIT));
}

TEST_F(Pipeline, BringsTheCursorBackAlsoAfterAFailure) {
    const HCURSOR before = SystemCursor(IDC_CROSS);
    SetCursor(before);
    Returns<KernelProject::Load>(project, E_FAIL);
    EXPECT_NE(Run(), L"");
    EXPECT_EQ(GetCursor(), before);
}

} // namespace
} // namespace zt::test
