// The kernel's and the administration's stand-ins, as the program calls them.
#include "tests/support/Isolation.h"
#include "tests/unit/installation/Automation.h"
#include "tests/unit/installation/Kit.h"

#include "components/ComponentIds.h"
#include "components/contracts/Kernel.h"
#include "installation/model/ProjectFiles.h"
#include "installation/setup/Layout.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

namespace devinst::test {
namespace {

namespace fs = std::filesystem;
using Microsoft::WRL::ComPtr;
using zt::KernelAdmin;
using zt::KernelProject;
using zt::MetadataCollection;
using zt::MetadataItem;

constexpr char Index[] =
    "<archive><project id=\"P1\" name=\"Pump\" storedName=\"Pump\" revision=\"A\" "
    "specification=\"Manual\" version=\"3\" language=\"en\"/></archive>";
constexpr char Project[] = "<project><declarations><declaration name=\"Title\"/>"
                           "<declaration name=\"Author\"/></declarations>"
                           "<metadata><item name=\"Title\">Pump</item></metadata></project>";

class Kernel : public testing::Test {
  protected:
    Kernel() {
        fs::create_directories(m_root.Path(L"work\\Projects\\P1"));
        fs::create_directories(m_root.Path(L"exchange"));
        WriteRegistry(m_root.Path());
        Write(L"work\\Projects\\P1\\index.xml", Index);
        Write(L"work\\Projects\\P1\\project.xml", Project);
        EXPECT_EQ(m_library.Create(CLSID_KernelAdmin, IID_KernelAdmin,
                                   reinterpret_cast<void**>(m_kernel.GetAddressOf())),
                  S_OK);
    }

    void Write(const std::wstring& name, const std::string& content) const {
        std::ofstream(fs::path(m_root.Path(name)), std::ios::binary) << content;
    }
    std::string Content(const std::wstring& name) const {
        std::ifstream file(fs::path(m_root.Path(name)), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    }
    HRESULT Open() {
        return KernelAdmin::OpenProject::Call(
            m_kernel.Get(), -1, _bstr_t(L"P1/new/A"),
            reinterpret_cast<KernelProject**>(m_project.ReleaseAndGetAddressOf()));
    }
    void OpenAndLoad() {
        ASSERT_EQ(Open(), S_OK);
        ASSERT_EQ(KernelProject::Load::Call(m_project.Get(), 0), S_OK);
    }
    ComPtr<IDispatch> Declaration(const wchar_t* name) {
        ComPtr<IDispatch> declaration;
        EXPECT_EQ(KernelProject::GetDeclaration::Call(m_project.Get(), _bstr_t(name), &declaration),
                  S_OK);
        return declaration;
    }
    ComPtr<IUnknown> FindItem(const wchar_t* name) {
        ComPtr<IUnknown> collection;
        KernelProject::GetMetadata::Call(
            m_project.Get(), reinterpret_cast<MetadataCollection**>(collection.GetAddressOf()));
        ComPtr<IUnknown> item;
        EXPECT_EQ(MetadataCollection::FindItem::Call(
                      collection.Get(), _variant_t(Declaration(name).Get()),
                      reinterpret_cast<MetadataItem**>(item.GetAddressOf())),
                  S_OK);
        return item;
    }
    HRESULT Attach(const wchar_t* path) {
        return KernelProject::AttachDocument::Call(
            m_project.Get(), _bstr_t(m_root.Path(path).c_str()), _bstr_t(L"KVDev.Manual"));
    }
    std::wstring DocumentName() {
        _bstr_t name;
        KernelProject::GetDocumentName::Call(m_project.Get(), name.GetAddress());
        return std::wstring(name, name.length());
    }

    zt::test::RegistryOverride m_registry{HKEY_LOCAL_MACHINE};
    zt::test::TemporaryFolder m_root;
    RegisteredLibrary m_library{L"zt-components.dll"};
    ComPtr<IUnknown> m_kernel;
    ComPtr<IUnknown> m_project;
};

TEST_F(Kernel, OpensTheRevisionThatIsThere) {
    EXPECT_EQ(Open(), S_OK);
    Write(L"work\\Projects\\P1\\index.xml",
          std::string(Index).replace(std::string(Index).find("\"A\""), 3, "\"B\""));
    EXPECT_EQ(Open(), E_FAIL);
    EXPECT_EQ(m_project, nullptr);
}

TEST_F(Kernel, LoadOfADamagedProjectFailsWithADescription) {
    Write(L"work\\Projects\\P1\\project.xml", "<project><metadata></project>");
    ASSERT_EQ(Open(), S_OK);
    SetErrorInfo(0, nullptr);
    EXPECT_EQ(KernelProject::Load::Call(m_project.Get(), 0), E_FAIL);
    ComPtr<IErrorInfo> information;
    ASSERT_EQ(GetErrorInfo(0, &information), S_OK);
    _bstr_t description;
    information->GetDescription(description.GetAddress());
    EXPECT_THAT(std::wstring(description), testing::HasSubstr(L"project.xml"));
}

TEST_F(Kernel, UndeclaredMetadataHasNoDeclaration) {
    OpenAndLoad();
    EXPECT_NE(Declaration(L"Title"), nullptr);
    EXPECT_EQ(Declaration(L"Colour"), nullptr);
    EXPECT_EQ(Declaration(L"title"), nullptr);
}

TEST_F(Kernel, SpecificationDeclaresMetadataToo) {
    Write(L"Metadata.xml", "<metadata><declaration name=\"Colour\"/></metadata>");
    KernelAdmin::LoadMetadata::Call(m_kernel.Get(), _bstr_t(m_root.Path(L"Metadata.xml").c_str()));
    OpenAndLoad();
    EXPECT_NE(Declaration(L"Colour"), nullptr);
}

TEST_F(Kernel, SettingAnEqualValueGivesSFalse) {
    OpenAndLoad();
    const ComPtr<IUnknown> item = FindItem(L"Title");
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(MetadataItem::SetValue::Call(item.Get(), _bstr_t(L"Pump")), S_FALSE);
    EXPECT_EQ(MetadataItem::SetValue::Call(item.Get(), _bstr_t(L"Valve")), S_OK);
    EXPECT_EQ(MetadataItem::SetValue::Call(item.Get(), _bstr_t(L"Valve")), S_FALSE);
    _variant_t value;
    MetadataItem::GetValue::Call(item.Get(), &value);
    EXPECT_STREQ(value.bstrVal, L"Valve");
}

TEST_F(Kernel, InsertedMetadataIsUnsetUntilAValueIsGiven) {
    OpenAndLoad();
    EXPECT_EQ(FindItem(L"Author"), nullptr);
    ComPtr<IUnknown> item;
    ASSERT_EQ(
        KernelProject::InsertMetadata::Call(m_project.Get(), -1, Declaration(L"Author").Get(),
                                            reinterpret_cast<MetadataItem**>(item.GetAddressOf())),
        S_OK);
    _variant_t value(1L);
    EXPECT_EQ(MetadataItem::GetValue::Call(item.Get(), &value), S_OK);
    EXPECT_EQ(value.vt, VT_EMPTY);
    EXPECT_EQ(MetadataItem::SetValue::Call(item.Get(), _bstr_t(L"")), S_OK);
    EXPECT_EQ(MetadataItem::GetValue::Call(item.Get(), &value), S_OK);
    EXPECT_EQ(value.vt, VT_BSTR);
    EXPECT_NE(FindItem(L"Author"), nullptr);
}

TEST_F(Kernel, RenameToTheSameNameGivesSFalseAndToNoFileNameFails) {
    OpenAndLoad();
    EXPECT_EQ(KernelProject::Rename::Call(m_project.Get(), _bstr_t(L"Pump")), S_FALSE);
    EXPECT_EQ(KernelProject::Rename::Call(m_project.Get(), _bstr_t(L"Valve")), S_OK);
    EXPECT_EQ(KernelProject::Rename::Call(m_project.Get(), _bstr_t(L"a\\b")), E_INVALIDARG);
    EXPECT_EQ(KernelProject::Rename::Call(m_project.Get(), _bstr_t(L"")), E_INVALIDARG);
}

TEST_F(Kernel, AttachedDocumentBecomesTheMainDocument) {
    OpenAndLoad();
    EXPECT_EQ(DocumentName(), L"");
    Write(L"Note.xml", "<note/>");
    EXPECT_EQ(Attach(L"Note.xml"), S_OK);
    EXPECT_EQ(DocumentName(), L"Note.xml");
    EXPECT_EQ(Content(L"work\\Projects\\P1\\documents\\Note.xml"), "<note/>");
}

TEST_F(Kernel, AttachedDocumentReplacesOneOfTheSameName) {
    OpenAndLoad();
    Write(L"Note.xml", "<note>first</note>");
    ASSERT_EQ(Attach(L"Note.xml"), S_OK);
    Write(L"Note.xml", "<note/>");
    EXPECT_EQ(Attach(L"Note.xml"), S_OK);
    EXPECT_EQ(Content(L"work\\Projects\\P1\\documents\\Note.xml"), "<note/>");
}

TEST_F(Kernel, DocumentThatIsNotThereIsNotAttached) {
    OpenAndLoad();
    EXPECT_EQ(Attach(L"Missing.xml"), HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    EXPECT_EQ(DocumentName(), L"");
}

// ---- archives ----

class Archives : public Kernel {
  protected:
    Archives() { EXPECT_EQ(m_library.Create(L"KV.Admin", IID_PPV_ARGS(&m_administration)), S_OK); }
    Outcome OpenArchive(const wchar_t* name, long mode) {
        return Invoke(m_administration.Get(), 2, DISPATCH_METHOD,
                      {m_root.Path(name).c_str(), mode});
    }
    VARTYPE ProjectsIn(const wchar_t* name) {
        const Outcome archive = OpenArchive(name, 2);
        return Invoke(archive.result.pdispVal, 1, DISPATCH_PROPERTYGET).result.vt;
    }

    ComPtr<IDispatch> m_administration;
};

TEST_F(Archives, SoundOneListsItsProject) {
    ZipWriter writer(m_root.Path(L"a.kvp"));
    writer.AddText("index.xml", Index);
    writer.Close();
    const Outcome archive = OpenArchive(L"a.kvp", 2);
    const Outcome projects = Invoke(archive.result.pdispVal, 1, DISPATCH_PROPERTYGET);
    ASSERT_EQ(projects.result.vt, VT_ARRAY | VT_BSTR);
    LONG at[] = {0, 1};
    _bstr_t name;
    ASSERT_EQ(SafeArrayGetElement(projects.result.parray, at, name.GetAddress()), S_OK);
    EXPECT_STREQ(name, L"Pump");
}

TEST_F(Archives, BrokenOneListsNoProject) {
    Write(L"empty.kvp", "");
    Write(L"text.kvp", "no archive");
    ZipWriter(m_root.Path(L"without-index.kvp")).Close();
    ZipWriter damaged(m_root.Path(L"damaged-index.kvp"));
    damaged.AddText("index.xml", "<archive>");
    damaged.Close();
    ZipWriter nameless(m_root.Path(L"nameless.kvp"));
    nameless.AddText("index.xml", "<archive><project id=\"P1\" name=\"\"/></archive>");
    nameless.Close();
    ZipWriter escaping(m_root.Path(L"escaping.kvp"));
    escaping.AddText("index.xml", "<archive><project id=\"..\" name=\"Pump\"/></archive>");
    escaping.Close();
    for (const wchar_t* const name : {L"empty.kvp", L"text.kvp", L"without-index.kvp",
                                      L"damaged-index.kvp", L"nameless.kvp", L"escaping.kvp"})
        EXPECT_EQ(ProjectsIn(name), VT_EMPTY) << fs::path(name).string();
}

TEST_F(Archives, OneThatIsNotThereOrCannotBeMadeIsNull) {
    for (const Outcome& outcome :
         {OpenArchive(L"missing.kvp", 2), OpenArchive(L"exchange", 2),
          OpenArchive(L"missing\\a.kvp", 0), OpenArchive(L"exchange", 0)}) {
        EXPECT_EQ(outcome.code, S_OK);
        EXPECT_EQ(outcome.result.vt, VT_DISPATCH);
        EXPECT_EQ(outcome.result.pdispVal, nullptr);
    }
}

struct RevisionCase {
    const wchar_t* revision;
    const wchar_t* next;
};

TEST(Revisions, CountOn) {
    const RevisionCase cases[] = {{L"", L"A"},     {L"A", L"B"}, {L"Z", L"AA"}, {L"AZ", L"BA"},
                                  {L"ZZ", L"AAA"}, {L"3", L"4"}, {L"9", L"10"}, {L"B9", L"B10"}};
    for (const RevisionCase& known : cases)
        EXPECT_EQ(NextRevision(known.revision), known.next);
}

} // namespace
} // namespace devinst::test
