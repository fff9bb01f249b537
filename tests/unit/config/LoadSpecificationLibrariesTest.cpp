// What the kernel has to load for a specification, and what follows from a refusal.
#include "tests/support/SpecificationFixture.h"

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SpecificationLibraries : public SpecificationTest {
  protected:
    void DescribeClass(const std::string& word) {
        Describe("<configuration class=\"" + word + "\"/>");
    }
};

// ---- what is loaded for each class ----

TEST_F(SpecificationLibraries, GivesTheKernelTheWholeFolder) {
    DescribeClass("TEXT");
    EXPECT_TRUE(Load());
    EXPECT_EQ(m_folder, m_data.Path() + L"\\Morvenit\\KVProductFamily\\IPCCFG\\S");
}

TEST_F(SpecificationLibraries, LoadsTablesTemplatesAndMetadataForAPartsCatalogue) {
    DescribeClass("IPC");
    WriteFile(SpecPath(L"RefTables.bak"), "backup");
    EXPECT_TRUE(Load());
    EXPECT_THAT(AllCalls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadRefTables(\"SPEC\\RefTables.xml\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadRefTablesBackup(\"SPEC\\RefTables.bak\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadCommandTemplates(\"SPEC\\Templates.xml\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, LoadsTablesAndMetadataForAnIllustration) {
    DescribeClass("ILLUS");
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                     "KernelAdmin.LoadRefTables(\"SPEC\\RefTables.xml\")",
                                     "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, LoadsDeclarationsTypesAndMetadataForAProcedureAndATraining) {
    for (const char* word : {"PROC", "TRNG"}) {
        m_calls.clear();
        DescribeClass(word);
        EXPECT_TRUE(Load());
        EXPECT_THAT(AllCalls(),
                    ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                "KernelAdmin.GetSpecificationFolder()",
                                "KernelAdmin.LoadDeclarations(\"SPEC\\Declarations.xml\")",
                                "KernelAdmin.GetSpecificationFolder()",
                                "KernelAdmin.LoadTypes(\"SPEC\\Types.xml\")",
                                "KernelAdmin.GetSpecificationFolder()",
                                "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"))
            << word;
    }
}

TEST_F(SpecificationLibraries, LoadsOnlyMetadataForAText) {
    DescribeClass("TEXT");
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                     "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, PrefersTheFilesOfTheLanguageOneByOne) {
    Describe("<configuration lang=\"de\" class=\"PROC\"/>");
    WriteFile(SpecPath(L"de\\Types.xml"), "<types/>");
    WriteFile(SpecPath(L"en\\Metadata.xml"), "<metadata/>");
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                     "KernelAdmin.LoadDeclarations(\"SPEC\\Declarations.xml\")",
                                     "KernelAdmin.LoadTypes(\"SPEC\\de\\Types.xml\")",
                                     "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, ResolvesAgainstTheFolderThatTheKernelNames) {
    DescribeClass("TEXT");
    m_kernel.On<KernelAdmin::GetSpecificationFolder>([](BSTR* folder) {
        *folder = SysAllocString(L"C:\\kernel's own");
        return S_OK;
    });
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(),
                ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                            "KernelAdmin.LoadMetadata(\"C:\\kernel's own\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, GoesOnWithoutTheFolderThatTheKernelDoesNotName) {
    DescribeClass("TEXT");
    for (const HRESULT result : {S_OK, E_FAIL}) {
        m_calls.clear();
        m_kernel.Return<KernelAdmin::GetSpecificationFolder>(result);
        EXPECT_TRUE(Load());
        EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                         "KernelAdmin.LoadMetadata(\"\\Metadata.xml\")"));
    }
}

TEST_F(SpecificationLibraries, IgnoresARefusedFolderAndRefusedMetadata) {
    DescribeClass("TEXT");
    m_folder = L"C:\\before";
    m_kernel.Return<KernelAdmin::PutSpecificationFolder, KernelAdmin::LoadMetadata>(E_FAIL);
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                     "KernelAdmin.LoadMetadata(\"C:\\before\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, ReportsRefusedDeclarationsAndTypesAndGoesOn) {
    DescribeClass("PROC");
    m_kernel.Return<KernelAdmin::LoadDeclarations, KernelAdmin::LoadTypes>(E_FAIL);
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                     "KernelAdmin.LoadDeclarations(\"SPEC\\Declarations.xml\")",
                                     "LogError(\"Couldn't load library of declarations.\")",
                                     "KernelAdmin.LoadTypes(\"SPEC\\Types.xml\")",
                                     "LogError(\"Couldn't load library of types.\")",
                                     "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
}

TEST_F(SpecificationLibraries, TakesAnySuccessForLoaded) {
    DescribeClass("TRNG");
    m_kernel.Return<KernelAdmin::LoadDeclarations, KernelAdmin::LoadTypes>(S_FALSE);
    EXPECT_TRUE(Load());
    EXPECT_THAT(Failures(), IsEmpty());
}

// ---- reference tables and templates ----

TEST_F(SpecificationLibraries, DeletesTheBackupOnceTheKernelHasBoth) {
    DescribeClass("ILLUS");
    WriteFile(SpecPath(L"RefTables.bak"), "backup");
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                     "KernelAdmin.LoadRefTables(\"SPEC\\RefTables.xml\")",
                                     "KernelAdmin.LoadRefTablesBackup(\"SPEC\\RefTables.bak\")",
                                     "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
    EXPECT_FALSE(std::filesystem::exists(SpecPath(L"RefTables.bak")));
}

TEST_F(SpecificationLibraries, LeavesTheBackupWhenTheTablesAreRefused) {
    DescribeClass("IPC");
    WriteFile(SpecPath(L"RefTables.bak"), "backup");
    m_kernel.Return<KernelAdmin::LoadRefTables>(E_FAIL);
    EXPECT_TRUE(Load());
    EXPECT_THAT(AllCalls(), ElementsAre("KernelAdmin.PutSpecificationFolder(\"SPEC\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadRefTables(\"SPEC\\RefTables.xml\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadCommandTemplates(\"SPEC\\Templates.xml\")",
                                        "KernelAdmin.GetSpecificationFolder()",
                                        "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")"));
    EXPECT_TRUE(std::filesystem::exists(SpecPath(L"RefTables.bak")));
}

TEST_F(SpecificationLibraries, LeavesTheBackupWhenItIsRefused) {
    DescribeClass("ILLUS");
    WriteFile(SpecPath(L"RefTables.bak"), "backup");
    m_kernel.Return<KernelAdmin::LoadRefTablesBackup>(E_FAIL);
    EXPECT_TRUE(Load());
    EXPECT_THAT(Failures(), IsEmpty());
    EXPECT_TRUE(std::filesystem::exists(SpecPath(L"RefTables.bak")));
}

TEST_F(SpecificationLibraries, TakesTheBackupOfTheLanguage) {
    Describe("<configuration lang=\"de\" class=\"ILLUS\"/>");
    WriteFile(SpecPath(L"RefTables.bak"), "backup");
    WriteFile(SpecPath(L"de\\RefTables.bak"), "backup");
    EXPECT_TRUE(Load());
    EXPECT_THAT(Calls(),
                testing::Contains("KernelAdmin.LoadRefTablesBackup(\"SPEC\\de\\RefTables.bak\")"));
    EXPECT_FALSE(std::filesystem::exists(SpecPath(L"de\\RefTables.bak")));
    EXPECT_TRUE(std::filesystem::exists(SpecPath(L"RefTables.bak")));
}

TEST_F(SpecificationLibraries, ReportsRefusedTemplatesByTheirFacilityOnly) {
    const struct {
        HRESULT result;
        bool reported;
    } rules[] = {
        {S_OK, false},
        {S_FALSE, false},
        {E_FAIL, false},
        {E_OUTOFMEMORY, false},
        {static_cast<HRESULT>(0x80400001), true},
        {static_cast<HRESULT>(0x80400000), true},
        {static_cast<HRESULT>(0xE040FFFF), true}, // the three highest bits do not count
        {static_cast<HRESULT>(0x00400001), true}, // nor does it that the call succeeded
        {static_cast<HRESULT>(0x80410001), false},
        {static_cast<HRESULT>(0x90400001), false},
        {static_cast<HRESULT>(0x80440001), false},
    };
    DescribeClass("IPC");
    for (const auto& rule : rules) {
        m_calls.clear();
        m_kernel.Return<KernelAdmin::LoadCommandTemplates>(rule.result);
        EXPECT_TRUE(Load());
        const CallList expected =
            rule.reported ? CallList{"LogError(\"Error loading IPC DPL command templates.\")"}
                          : CallList{};
        EXPECT_EQ(Failures(), expected) << std::hex << rule.result;
        EXPECT_EQ(Calls().back(), "KernelAdmin.LoadMetadata(\"SPEC\\Metadata.xml\")");
    }
}

} // namespace
} // namespace zt::test
