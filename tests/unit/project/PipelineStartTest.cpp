// The pipeline from its start to the opened and loaded project.
#include "components/ComponentIds.h"
#include "tests/support/ProjectFixture.h"

namespace zt::test {
namespace {

using testing::ElementsAre;

using PipelineStart = ProjectTest;

constexpr HRESULT SomeFailure = static_cast<HRESULT>(0x80045678);

_variant_t NoArray() {
    return _variant_t(L"id 42");
}

// ---- kernel admin and host ----

TEST_F(PipelineStart, FailsWithoutAKernelAdmin) {
    kernelClass.reset();
    kernelClass = std::make_unique<TestClass>(CLSID_KernelAdmin, TestClass::Fails(SomeFailure));
    EXPECT_EQ(Run(), L"Couldn't load KV Kernel");
    EXPECT_THAT(calls, ElementsAre("log: Processing project 'Pump'"));
    EXPECT_NE(statusSite, nullptr) << "the host is made before the kernel";
}

TEST_F(PipelineStart, FailsWhereTheCreationOfTheKernelAdminGivesNothing) {
    kernelClass.reset();
    kernelClass = std::make_unique<TestClass>(CLSID_KernelAdmin, TestClass::GivesNothing());
    EXPECT_EQ(Run(), L"Couldn't load KV Kernel");
}

TEST_F(PipelineStart, HandsItsClientSiteToTheKernel) {
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(siteHolder.site.Get(), static_cast<IOleClientSite*>(statusSite.Get()));
    siteHolder.site.Reset();
    EXPECT_EQ(statusSite->AddRef(), 2u) << "the run holds one reference";
    statusSite->Release();
}

TEST_F(PipelineStart, GoesOnWithoutAKernelThatTakesASite) {
    admin.Answer(IID_IObjectWithSite, nullptr);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelAdmin.SetSite"), 0);
}

TEST_F(PipelineStart, IgnoresAKernelThatRefusesTheSite) {
    siteHolder.result = SomeFailure;
    EXPECT_EQ(Run(), L"");
}

TEST_F(PipelineStart, IgnoresAKernelThatRefusesTheClientName) {
    Returns<KernelAdmin::PutClientName>(admin, SomeFailure);
    EXPECT_EQ(Run(), L"");
}

// ---- administration and configuration ----

TEST_F(PipelineStart, FailsWithoutTheAdministrationComponent) {
    administrationClass.reset();
    administrationClass = std::make_unique<TestClass>(L"KV.Admin", TestClass::Fails(SomeFailure));
    EXPECT_EQ(Run(), L"Couldn't create KVAdmin");
    EXPECT_THAT(calls, ElementsAre("log: Processing project 'Pump'", "create the kernel admin",
                                   "KernelAdmin.SetSite(object)",
                                   "KernelAdmin.PutClientName(\"ZeltorAuthor_Invisible\")"));
}

TEST_F(PipelineStart, FailsWhereTheCreationOfTheAdministrationGivesNothing) {
    administrationClass.reset();
    administrationClass = std::make_unique<TestClass>(L"KV.Admin", TestClass::GivesNothing());
    EXPECT_EQ(Run(), L"Couldn't create KVAdmin");
}

TEST_F(PipelineStart, RaisesWhatTheAdministrationSaysOfAFailure) {
    On<Administration::OpenConfiguration>(administration, Raise(L"No configuration for Pump."));
    EXPECT_EQ(Run(), L"OLE: No configuration for Pump.");
}

TEST_F(PipelineStart, RaisesTheFailuresOfTheConfigurationsOpening) {
    On<Configuration::Open>(configuration, Succeed(SomeFailure));
    EXPECT_EQ(Run(), L"OLE: 0x80045678");
    EXPECT_EQ(Count("Configuration.ConfigurationFile"), 0);
}

TEST_F(PipelineStart, FailsWhereTheConfigurationIsNotLoaded) {
    services.loadConfiguration = [](const wchar_t*) { return SomeFailure; };
    EXPECT_EQ(Run(), L"Couldn't load configuration");
    EXPECT_EQ(Count("Administration.OpenArchive"), 0);
}

TEST_F(PipelineStart, AcceptsEverySuccessCodeOfTheConfiguration) {
    services.loadConfiguration = [](const wchar_t*) { return S_FALSE; };
    EXPECT_EQ(Run(), L"");
}

TEST_F(PipelineStart, EndsWithTheTextOfAFailingConfiguration) {
    services.loadConfiguration = [](const wchar_t*) -> HRESULT {
        throw CString(L"Configuration file does not exist: x");
    };
    EXPECT_EQ(Run(), L"Configuration file does not exist: x");
}

TEST_F(PipelineStart, LoadsAnEmptyPathWhereTheConfigurationNamesNoFile) {
    _variant_t null;
    null.vt = VT_NULL;
    for (const _variant_t& nothing : {_variant_t(), null, _variant_t(L"")}) {
        On<Configuration::ConfigurationFile>(configuration, Give(nothing));
        services.loadConfiguration = [](const wchar_t* file) {
            EXPECT_STREQ(file, L"");
            return E_FAIL;
        };
        EXPECT_EQ(Run(), L"Couldn't load configuration");
    }
}

TEST_F(PipelineStart, GoesOnWithoutAConfigurationObjectUntilSomethingIsMissing) {
    On<Administration::OpenConfiguration>(administration, Succeed());
    EXPECT_EQ(Run(), L"Project could not be imported into configuration");
    EXPECT_EQ(Count("load the configuration"), 1);
    EXPECT_EQ(Count("Configuration."), 0);
    EXPECT_EQ(Count("Source.ExtractProject(\"Zipped Pump\", \"\\Representations\")"), 1);
}

// ---- import ----

TEST_F(PipelineStart, FindsNoProjectInAnArchiveThatCannotBeOpened) {
    On<Administration::OpenArchive>(administration, Succeed());
    EXPECT_EQ(Run(), L"No project in source zip");
    On<Administration::OpenArchive>(administration,
                                    Give(_variant_t(static_cast<IDispatch*>(nullptr))));
    EXPECT_EQ(Run(), L"No project in source zip");
}

TEST_F(PipelineStart, FindsNoProjectInAnArchiveThatListsNoTexts) {
    _variant_t byReference;
    byReference.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
    _variant_t noArray;
    noArray.vt = VT_ARRAY | VT_BSTR;
    noArray.parray = nullptr;
    _variant_t numbers;
    numbers.vt = VT_ARRAY | VT_I4;
    numbers.parray = SafeArrayCreateVector(VT_I4, 0, 2);
    for (const _variant_t& projects : {_variant_t(), NoArray(), noArray, numbers}) {
        On<Archive::Projects>(source, Give(projects));
        EXPECT_EQ(Run(), L"No project in source zip") << projects.vt;
        EXPECT_EQ(Count("Source.ExtractProject"), 0);
    }
}

TEST_F(PipelineStart, FindsNoProjectInAnArchiveThatListsAnEmptyName) {
    for (const wchar_t* const name : {L"", static_cast<const wchar_t*>(nullptr)}) {
        On<Archive::Projects>(source, Give(TextArray(L"Zipped Pump", name)));
        EXPECT_EQ(Run(), L"No project in source zip");
    }
}

TEST_F(PipelineStart, RaisesARefusedImport) {
    On<Configuration::ImportProject>(configuration, Raise(L"The project is damaged."));
    EXPECT_EQ(Run(), L"OLE: The project is damaged.");
    EXPECT_EQ(Count("Configuration.ImportedProjects"), 0);
    EXPECT_EQ(source.References(), 0);
}

TEST_F(PipelineStart, ImportsNothingWhereTheArchiveHandsOverNothing) {
    On<Archive::ExtractProject>(source, Succeed());
    On<Configuration::ImportProject>(configuration, Succeed());
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("Configuration.ImportProject(null)"), 1);
}

TEST_F(PipelineStart, FailsWhereTheConfigurationListsNoImportedProject) {
    for (const _variant_t& imported :
         {_variant_t(), NoArray(), TextArray(L"rev 3", L""), TextArray(L"rev 3", nullptr)}) {
        On<Configuration::ImportedProjects>(configuration, Give(imported));
        EXPECT_EQ(Run(), L"Project could not be imported into configuration") << imported.vt;
        EXPECT_EQ(Count("KernelAdmin.OpenProject"), 0);
    }
}

TEST_F(PipelineStart, RaisesTheResultCodeWhereAListCannotBeFreed) {
    const _variant_t locked = TextArray(L"rev 3", L"id 42");
    SafeArrayLock(locked.parray);
    // Hands over the array itself, which stays the test's.
    const InvokeAnswer giveLocked = [&](const Invocation&, VARIANT* result, EXCEPINFO*) {
        *result = locked;
        return S_OK;
    };
    On<Configuration::ImportedProjects>(configuration, giveLocked);
    const std::wstring failure = Run();
    EXPECT_EQ(failure.rfind(L"OLE: ", 0), 0u) << "no failure";
    EXPECT_EQ(Count("Configuration.ImportedProjects"), 1);
    EXPECT_EQ(Count("KernelAdmin.OpenProject"), 0);
    SafeArrayUnlock(locked.parray);
}

// ---- open ----

TEST_F(PipelineStart, OpensANewRevisionAlsoOfAProjectWithoutOne) {
    for (const wchar_t* const revision : {L"", static_cast<const wchar_t*>(nullptr)}) {
        On<Configuration::ImportedProjects>(configuration, Give(TextArray(revision, L"id 42")));
        EXPECT_EQ(Run(), L"");
    }
    EXPECT_EQ(Count("KernelAdmin.OpenProject(-1, \"id 42/new/\")"), 2);
    EXPECT_STREQ(importedProjectId, L"id 42");
}

TEST_F(PipelineStart, FailsWhereTheKernelOpensNoProject) {
    for (const HRESULT result : {S_OK, SomeFailure}) {
        Returns<KernelAdmin::OpenProject>(admin, result);
        EXPECT_EQ(Run(), L"Can't open project");
        EXPECT_EQ(Count("KernelProject."), 0);
    }
}

TEST_F(PipelineStart, TakesAnOpenedProjectWhateverTheResultCodeSays) {
    On<KernelAdmin::OpenProject>(admin, [this](LONG, BSTR, KernelProject** opened) {
        (*opened = project.Get())->AddRef();
        return SomeFailure;
    });
    EXPECT_EQ(Run(), L"");
}

// ---- specification ----

TEST_F(PipelineStart, FailsForAProjectWithoutASpecification) {
    GivesText<KernelProject::GetSpecificationName>(project, L"");
    EXPECT_EQ(Run(), L"Project specification is not defined");
    EXPECT_EQ(Count("KernelProject.GetSpecificationVersion"), 1);
    EXPECT_EQ(Count("KernelProject.GetLanguage"), 1);
    EXPECT_EQ(Count("load the specification"), 0);

    Returns<KernelProject::GetSpecificationName>(project, SomeFailure);
    EXPECT_EQ(Run(), L"Project specification is not defined");
}

TEST_F(PipelineStart, FailsWhereTheSpecificationIsNotLoaded) {
    services.loadSpecification = [](const wchar_t*, const wchar_t*) { return false; };
    EXPECT_EQ(Run(), L"Can't load specification - aborting...");
    EXPECT_EQ(Count("KernelProject.PutLanguage"), 0);
    EXPECT_EQ(Count("log: Specification"), 0);
}

TEST_F(PipelineStart, RequiresNoVersionWhereTheProjectNamesNone) {
    Returns<KernelProject::GetSpecificationVersion>(project, SomeFailure);
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("load the specification Pumps, null"), 1);
    EXPECT_EQ(Count("log: Specification 'Pumps', v. loaded"), 1);
}

TEST_F(PipelineStart, GivesTheProjectTheLanguageThatTheSpecificationChose) {
    Returns<KernelProject::GetLanguage>(project, SomeFailure);
    services.loadSpecification = [this](const wchar_t*, const wchar_t*) {
        EXPECT_EQ(language.length(), 0u);
        language = L"de";
        return true;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count("KernelProject.PutLanguage(\"de\")"), 1);
}

TEST_F(PipelineStart, IgnoresAProjectThatRefusesTheLanguage) {
    Returns<KernelProject::PutLanguage>(project, SomeFailure);
    EXPECT_EQ(Run(), L"");
}

// ---- product ----

struct Product {
    int specificationClass;
    const char* selection;
    const wchar_t* registryKey;

    friend void PrintTo(const Product& one, std::ostream* out) { *out << one.selection; }
};

class PipelineProduct : public ProjectTest, public testing::WithParamInterface<Product> {};

TEST_P(PipelineProduct, IsSelectedByTheSpecificationsClass) {
    const Product& product = GetParam();
    services.loadSpecification = [&](const wchar_t*, const wchar_t*) {
        specificationClass = static_cast<SpecificationClass>(product.specificationClass);
        return true;
    };
    EXPECT_EQ(Run(), L"");
    EXPECT_EQ(Count(product.selection), 1);
    EXPECT_EQ(Count("KernelAdmin.SelectProduct"), 1);
    EXPECT_EQ(statusSite->Product().GetProductRegistryKey(true), product.registryKey);
}

INSTANTIATE_TEST_SUITE_P(
    , PipelineProduct,
    testing::Values(
        Product{0, "KernelAdmin.SelectProduct(13)", L"Software\\Morvenit\\ZeltorCatalog"},
        Product{1, "KernelAdmin.SelectProduct(11)", L"Software\\Morvenit\\ZeltorManual"},
        Product{2, "KernelAdmin.SelectProduct(3)", L"Software\\Morvenit\\ZeltorLearning"},
        Product{3, "KernelAdmin.SelectProduct(127)", L"Software\\Morvenit\\ZeltorText"},
        Product{4, "KernelAdmin.SelectProduct(141)", L"Software\\Morvenit\\ZeltorIllustrator"}));

TEST_F(PipelineStart, IgnoresAKernelThatRefusesTheProduct) {
    Returns<KernelAdmin::SelectProduct>(admin, SomeFailure);
    EXPECT_EQ(Run(), L"");
}

// ---- load ----

void SetErrorDescription(const wchar_t* description) {
    ComPtr<ICreateErrorInfo> created;
    CreateErrorInfo(&created);
    created->SetDescription(const_cast<wchar_t*>(description));
    ComPtr<IErrorInfo> info;
    created.As(&info);
    SetErrorInfo(0, info.Get());
}

TEST_F(PipelineStart, FailsWithTheKernelsDescriptionOfAProjectThatIsNotLoaded) {
    On<KernelProject::Load>(project, [](LONG) {
        SetErrorDescription(L"Object 17 is missing.");
        return SomeFailure;
    });
    EXPECT_EQ(Run(), L"ERROR loading project: Object 17 is missing.");
    EXPECT_EQ(Count("log: Project loaded"), 0);
}

TEST_F(PipelineStart, FailsWithoutADescriptionWhereTheKernelGivesNone) {
    Returns<KernelProject::Load>(project, SomeFailure);
    EXPECT_EQ(Run(), L"ERROR loading project: ");
}

TEST_F(PipelineStart, QuotesNoDescriptionOfAnEarlierFailure) {
    SetErrorDescription(L"Of something else.");
    Returns<KernelProject::Load>(project, SomeFailure);
    EXPECT_EQ(Run(), L"ERROR loading project: ");
}

TEST_F(PipelineStart, AcceptsEverySuccessCodeOfTheLoad) {
    Returns<KernelProject::Load>(project, S_FALSE);
    EXPECT_EQ(Run(), L"");
}

} // namespace
} // namespace zt::test
