// What the pipeline changes in the loaded project, and how it saves it.
#include "tests/support/ProjectFixture.h"

namespace zt::test {
namespace {

using testing::ElementsAre;

using PipelineMetadata = ProjectTest;
using PipelineChanges = ProjectTest;
using PipelineSave = ProjectTest;

constexpr HRESULT SomeFailure = static_cast<HRESULT>(0x80045678);

// ---- metadata ----

TEST_F(PipelineMetadata, IsNotAskedForWithoutAnEntry) {
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.GetMetadata"), 0);
}

TEST_F(PipelineMetadata, IsSetInTheOrderOfTheNamesCharacterCodes) {
    wanted[L"b"] = {L"1", true};
    wanted[L"\x00E4"] = {L"2", true};
    wanted[L"B"] = {L"3", true};
    EXPECT_EQ(Run(), L"");
    std::vector<std::string> asked;
    for (const std::string& call : calls)
        if (call.rfind("KernelProject.GetDeclaration", 0) == 0)
            asked.push_back(call);
    EXPECT_THAT(asked, ElementsAre("KernelProject.GetDeclaration(\"B\")",
                                   "KernelProject.GetDeclaration(\"b\")",
                                   "KernelProject.GetDeclaration(\"\xC3\xA4\")"));
    EXPECT_EQ(Count("KernelProject.GetMetadata"), 1);
}

TEST_F(PipelineMetadata, FailsWithoutADeclarationOfTheName) {
    wanted[L"Title"] = {L"T", true};
    for (const HRESULT result : {S_OK, SomeFailure}) {
        Returns<KernelProject::GetDeclaration>(project, result);
        EXPECT_EQ(Run(), L"Can't create declaration for metadata: Title");
        EXPECT_EQ(Count("MetadataCollection."), 0);
    }
}

TEST_F(PipelineMetadata, IsInsertedWhereTheProjectHasNoItem) {
    wanted[L"Title"] = {L"T", true};
    FakeObject<MetadataItem> inserted(calls, "Inserted");
    Returns<MetadataCollection::FindItem>(metadata, S_OK);
    On<KernelProject::InsertMetadata>(project,
                                      [&](LONG, IDispatch* wantedBy, MetadataItem** given) {
                                          EXPECT_EQ(wantedBy, &declaration);
                                          (*given = inserted.Get())->AddRef();
                                          return S_OK;
                                      });
    Returns<MetadataItem::GetValue>(inserted, S_OK);
    Returns<MetadataItem::SetValue>(inserted, S_OK);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.InsertMetadata(-1, object)"), 1);
    EXPECT_EQ(Count("Inserted.SetValue(\"T\")"), 1);
}

TEST_F(PipelineMetadata, FailsWhereNoItemIsInserted) {
    wanted[L"Title"] = {L"T", true};
    for (const HRESULT result : {S_OK, SomeFailure}) {
        Returns<MetadataCollection::FindItem>(metadata, result);
        Returns<KernelProject::InsertMetadata>(project, result);
        EXPECT_EQ(Run(), L"Can't insert metadata: Title");
    }
}

TEST_F(PipelineMetadata, IsInsertedWhereTheProjectHandsOverNoCollection) {
    wanted[L"Title"] = {L"T", true};
    Returns<KernelProject::GetMetadata>(project, S_OK);
    On<KernelProject::InsertMetadata>(project, [&](LONG, IDispatch*, MetadataItem** given) {
        (*given = item.Get())->AddRef();
        return S_OK;
    });
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.InsertMetadata"), 1);
    EXPECT_EQ(Count("log: Value of metadata 'Title' set to 'T'"), 1);
}

struct MetadataCase {
    const char* name;
    bool overwrite;
    _variant_t current;
    bool isSet;

    friend void PrintTo(const MetadataCase& one, std::ostream* out) { *out << one.name; }
};

class PipelineMetadataValue : public ProjectTest,
                              public testing::WithParamInterface<MetadataCase> {};

TEST_P(PipelineMetadataValue, IsSetWhereItIsMissingOrToBeOverwritten) {
    const MetadataCase& one = GetParam();
    wanted[L"Title"] = {L"new", one.overwrite};
    On<MetadataItem::GetValue>(item, [&](VARIANT* value) {
        *value = _variant_t(one.current).Detach();
        return S_OK;
    });
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("MetadataItem.SetValue(\"new\")"), one.isSet ? 1 : 0);
    EXPECT_EQ(Count("log: Value of metadata 'Title' set to 'new'"), one.isSet ? 1 : 0);
    EXPECT_EQ(Count("log: Project saved"), one.isSet ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(
    , PipelineMetadataValue,
    testing::Values(MetadataCase{"AddedWhereUnset", false, _variant_t(), true},
                    MetadataCase{"AddedWhereSet", false, _variant_t(L"old"), false},
                    MetadataCase{"AddedWhereSetToNothing", false, _variant_t(L""), false},
                    MetadataCase{"AddedWhereSetToANumber", false, _variant_t(0L), false},
                    MetadataCase{"SetWhereUnset", true, _variant_t(), true},
                    MetadataCase{"SetWhereSet", true, _variant_t(L"old"), true}),
    [](const auto& one) { return one.param.name; });

TEST_F(PipelineMetadata, CountsAsUnsetWhereItsValueCannotBeRead) {
    wanted[L"Title"] = {L"T", false};
    Returns<MetadataItem::GetValue>(item, SomeFailure);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("MetadataItem.SetValue(\"T\")"), 1);
}

TEST_F(PipelineMetadata, MayBeSetToAnEmptyText) {
    wanted[L"Title"] = {L"", true};
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("MetadataItem.SetValue(\"\")"), 1);
    EXPECT_EQ(Count("log: Value of metadata 'Title' set to ''"), 1);
}

TEST_F(PipelineMetadata, FailsWhereTheValueIsRefused) {
    wanted[L"Title"] = {L"T", true};
    wanted[L"Zone"] = {L"Z", true};
    Returns<MetadataItem::SetValue>(item, SomeFailure);
    EXPECT_EQ(Run(), L"Can't set value of metadata: Title");
    EXPECT_EQ(Count("KernelProject.GetDeclaration"), 1);
    EXPECT_EQ(item.References(), 0);
    EXPECT_EQ(declaration.References(), 0);
    EXPECT_EQ(metadata.References(), 0);
}

TEST_F(PipelineMetadata, ThatDoesNotChangeIsNeitherLoggedNorSaved) {
    wanted[L"Title"] = {L"T", true};
    for (const HRESULT unchanged : {S_FALSE, static_cast<HRESULT>(0x00040000)}) {
        Returns<MetadataItem::SetValue>(item, unchanged);
        EXPECT_EQ(Run(), L"");
    }
    EXPECT_EQ(Count("MetadataItem.SetValue"), 2);
    EXPECT_EQ(Count("log: Value of metadata"), 0);
    EXPECT_EQ(Count("KernelAdmin.SetSaveMode"), 0);
}

TEST_F(PipelineMetadata, WithPercentSignsAndQuotesIsLoggedAsItStands) {
    wanted[L"100%s 'x'"] = {L"%d%n \"y\"", true};
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("log: Value of metadata '100%s 'x'' set to '%d%n \"y\"'"), 1);
}

TEST_F(PipelineMetadata, RaisesTheResultCodeWhereAValueCannotBeFreed) {
    wanted[L"Title"] = {L"T", true};
    const _variant_t locked = TextArray(L"", L"");
    SafeArrayLock(locked.parray);
    On<MetadataItem::GetValue>(item, [&](VARIANT* value) {
        *value = locked;
        return S_OK;
    });
    EXPECT_EQ(Run().rfind(L"OLE: ", 0), 0u);
    EXPECT_EQ(item.References(), 0);
    SafeArrayUnlock(locked.parray);
}

// ---- rename ----

TEST_F(PipelineChanges, ARenameIsLoggedAndSaved) {
    request.newProjectName = L"Pump 2";
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.Rename(\"Pump 2\")"), 1);
    EXPECT_EQ(Count("log: Project name changed to 'Pump 2'"), 1);
    EXPECT_EQ(Count("log: Project saved"), 1);
}

TEST_F(PipelineChanges, ARenameThatChangesNothingOrFailsIsSilent) {
    request.newProjectName = L"Pump 2";
    for (const HRESULT result : {S_FALSE, SomeFailure, E_FAIL}) {
        Returns<KernelProject::Rename>(project, result);
        EXPECT_EQ(Run(), L"");
    }
    EXPECT_EQ(Count("KernelProject.Rename"), 3);
    EXPECT_EQ(Count("log: Project name changed"), 0);
    EXPECT_EQ(Count("KernelAdmin.SetSaveMode"), 0);
}

// ---- document ----

TEST_F(PipelineChanges, ADocumentWithAFolderIsAttachedAsItStands) {
    request.documentPath = L"C:\\docs\\a\\manual.xml";
    documentHandler = L"manual";
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.AttachDocument(\"C:\\docs\\a\\manual.xml\", \"manual\")"), 1);
    EXPECT_EQ(Count("log: Document 'C:\\docs\\a\\manual.xml' attached to the project"), 1);
    EXPECT_EQ(documentFolder, L"C:\\docs\\a");
    EXPECT_EQ(Count("log: Project saved"), 1);
}

TEST_F(PipelineChanges, ADocumentWithoutAFolderIsTakenFromTheExchangeFolder) {
    request.documentPath = L"manual.xml";
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.AttachDocument(\"D:\\ex\\manual.xml\", null)"), 1);
    EXPECT_EQ(Count("log: Document 'manual.xml' attached to the project"), 1);
    EXPECT_EQ(documentFolder, L"D:\\ex");
}

TEST_F(PipelineChanges, ADocumentThatIsRefusedFailsWithItsFullPath) {
    request.documentPath = L"manual.xml";
    Returns<KernelProject::AttachDocument>(project, SomeFailure);
    EXPECT_EQ(Run(), L"Error attaching document: D:\\ex\\manual.xml");
    EXPECT_EQ(Count("log: Document"), 0);
    EXPECT_EQ(documentFolder, L"D:\\ex");
}

TEST_F(PipelineChanges, EverySuccessCodeOfAttachingCounts) {
    request.documentPath = L"manual.xml";
    Returns<KernelProject::AttachDocument>(project, S_FALSE);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("log: Project saved"), 1);
}

// ---- save ----

TEST_F(PipelineSave, FailsWhereNoArchiveIsCreated) {
    request.newRevision = true;
    for (const _variant_t& nothing : {_variant_t(), _variant_t(static_cast<IDispatch*>(nullptr))}) {
        On<Administration::OpenArchive>(
            administration, [&](const Invocation& call, VARIANT* result, EXCEPINFO*) {
                *result = call.arguments[1].lVal == 2
                              ? _variant_t(static_cast<IDispatch*>(&source)).Detach()
                              : _variant_t(nothing).Detach();
                return S_OK;
            });
        EXPECT_EQ(Run(), L"Can't create KVP-file");
        EXPECT_EQ(Count("KernelProject.GetConfigurationKey"), 0);
    }
}

TEST_F(PipelineSave, IgnoresAKernelThatRefusesTheSaveMode) {
    request.newRevision = true;
    Returns<KernelAdmin::SetSaveMode>(admin, SomeFailure);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("log: Project saved to KVP file"), 1);
}

TEST_F(PipelineSave, RaisesARefusedExport) {
    request.newRevision = true;
    On<Configuration::ExportProject>(configuration, Raise(L"Disk full."));
    EXPECT_EQ(Run(), L"OLE: Disk full.");
    EXPECT_EQ(Count("log: Project saved"), 0);
    EXPECT_EQ(target.References(), 0);
}

TEST_F(PipelineSave, RaisesARefusedAddition) {
    request.newRevision = true;
    On<Archive::AddProject>(target, Succeed(SomeFailure));
    EXPECT_EQ(Run(), L"OLE: 0x80045678");
    EXPECT_EQ(Count("log: Project saved"), 0);
}

TEST_F(PipelineSave, AddsNothingWhereTheConfigurationHandsOverNothing) {
    request.newRevision = true;
    On<Configuration::ExportProject>(configuration, Succeed());
    On<Archive::AddProject>(target, Succeed());
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("Target.AddProject(null, \"Stored Pump\", "
                    "\"C:\\work\\Representations\")"),
              1);
}

TEST_F(PipelineSave, GoesOnWithEmptyTextsWhereTheProjectGivesNone) {
    request.newRevision = true;
    Returns<KernelProject::GetConfigurationKey>(project, SomeFailure);
    Returns<KernelProject::GetStoredName>(project, S_OK);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("Configuration.ExportProject(\"\", -1)"), 1);
    EXPECT_EQ(Count("Target.AddProject(object, \"\", \"C:\\work\\Representations\")"), 1);
}

} // namespace
} // namespace zt::test
