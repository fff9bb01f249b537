#include "tests/support/ProjectFixture.h"

#include "components/ComponentIds.h"

namespace zt::test {

_variant_t TextArray(const wchar_t* first, const wchar_t* second) {
    SAFEARRAYBOUND bounds[] = {{1, 0}, {2, 0}};
    VARIANT array = {};
    array.vt = VT_ARRAY | VT_BSTR;
    array.parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    const wchar_t* const texts[] = {first, second};
    for (LONG i = 0; i < 2; ++i) {
        LONG at[] = {0, i};
        SafeArrayPutElement(array.parray, at, _bstr_t(texts[i]).copy(false));
    }
    return _variant_t(array, false);
}

void InstallThisProgram(const RegistryOverride& machine) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    machine.SetText(L"Software\\Morvenit\\ZeltorCompiler", L"InstallPathLite", program);
}

ProjectTest::ProjectTest() {
    InstallThisProgram(registry);
    request.exchangePath = L"D:\\ex";
    request.projectName = L"Pump";
    AnswerForTheKernel();
    AnswerForTheProject();
    AnswerForTheAdministration();
    AnswerForTheServices();
}

ProjectTest::~ProjectTest() {
    siteHolder.site.Reset();
}

void ProjectTest::AnswerForTheKernel() {
    admin.Answer(IID_KernelAdmin);
    admin.Answer(IID_IObjectWithSite, &siteHolder);
    kernelClass = std::make_unique<TestClass>(CLSID_KernelAdmin,
                                              [this](IUnknown* outer, REFIID iid, void** object) {
                                                  EXPECT_EQ(outer, nullptr);
                                                  EXPECT_EQ(iid, IID_KernelAdmin);
                                                  calls.push_back("create the kernel admin");
                                                  return admin.Get()->QueryInterface(iid, object);
                                              });
    Returns<KernelAdmin::PutClientName>(admin, S_OK);
    Returns<KernelAdmin::SelectProduct>(admin, S_OK);
    Returns<KernelAdmin::SetSaveMode>(admin, S_OK);
    On<KernelAdmin::OpenProject>(admin, [this](LONG, BSTR, KernelProject** opened) {
        (*opened = project.Get())->AddRef();
        return S_OK;
    });
}

void ProjectTest::AnswerForTheProject() {
    GivesText<KernelProject::GetSpecificationName>(project, L"Pumps");
    GivesText<KernelProject::GetSpecificationVersion>(project, L"12");
    GivesText<KernelProject::GetLanguage>(project, L"en");
    GivesText<KernelProject::GetConfigurationKey>(project, L"key 7");
    GivesText<KernelProject::GetStoredName>(project, L"Stored Pump");
    Returns<KernelProject::PutLanguage>(project, S_OK);
    Returns<KernelProject::Load>(project, S_OK);
    Returns<KernelProject::Rename>(project, S_OK);
    Returns<KernelProject::AttachDocument>(project, S_OK);
    Returns<KernelProject::StartNewRevision>(project, S_OK);
    On<KernelProject::GetMetadata>(project, [this](MetadataCollection** given) {
        (*given = metadata.Get())->AddRef();
        return S_OK;
    });
    On<KernelProject::GetDeclaration>(project, [this](BSTR, IDispatch** given) {
        (*given = &declaration)->AddRef();
        return S_OK;
    });
    On<MetadataCollection::FindItem>(metadata, [this](VARIANT wantedBy, MetadataItem** given) {
        EXPECT_EQ(wantedBy.pdispVal, &declaration);
        (*given = item.Get())->AddRef();
        return S_OK;
    });
    Returns<MetadataItem::GetValue>(item, S_OK);
    Returns<MetadataItem::SetValue>(item, S_OK);
}

void ProjectTest::AnswerForTheAdministration() {
    administrationClass =
        std::make_unique<TestClass>(L"KV.Admin", [this](IUnknown*, REFIID iid, void** object) {
            calls.push_back("create KV.Admin");
            return administration.QueryInterface(iid, object);
        });
    On<Administration::OpenConfiguration>(
        administration, Give(_variant_t(static_cast<IDispatch*>(&configuration))));
    On<Administration::OpenArchive>(
        administration, [this](const Invocation& call, VARIANT* result, EXCEPINFO*) {
            FakeAutomation<Archive>& archive = call.arguments[1].lVal == 2 ? source : target;
            *result = _variant_t(static_cast<IDispatch*>(&archive)).Detach();
            return S_OK;
        });
    On<Configuration::ClientName>(configuration, Succeed());
    On<Configuration::Open>(configuration, Succeed());
    On<Configuration::ConfigurationFile>(configuration, Give(L"C:\\kv\\kv.cfg"));
    On<Configuration::WorkFolder>(configuration, Give(L"C:\\work"));
    On<Configuration::ImportedProjects>(configuration, Give(TextArray(L"rev 3", L"id 42")));
    On<Configuration::ImportProject>(configuration,
                                     [this](const Invocation& call, VARIANT*, EXCEPINFO*) {
                                         EXPECT_EQ(call.arguments[0].pdispVal, &extracted);
                                         return S_OK;
                                     });
    On<Configuration::ExportProject>(configuration,
                                     Give(_variant_t(static_cast<IDispatch*>(&exported))));
    On<Archive::Projects>(source, Give(TextArray(L"unused", L"Zipped Pump")));
    On<Archive::ExtractProject>(source, Give(_variant_t(static_cast<IDispatch*>(&extracted))));
    On<Archive::AddProject>(target, [this](const Invocation& call, VARIANT*, EXCEPINFO*) {
        EXPECT_EQ(call.arguments[0].pdispVal, &exported);
        return S_OK;
    });
}

void ProjectTest::AnswerForTheServices() {
    services.loadConfiguration = [this](const wchar_t* file) {
        calls.push_back("load the configuration " + std::string(ToUtf8(file, -1).c_str()));
        return S_OK;
    };
    services.loadSpecification = [this](const wchar_t* name, const wchar_t* version) {
        calls.push_back("load the specification " + std::string(ToUtf8(name, -1).c_str()) + ", " +
                        (version != nullptr ? ToUtf8(version, -1).c_str() : "null"));
        return true;
    };
    services.updateProjectDocument = [this] {
        calls.push_back("update the document");
        return true;
    };
    services.publishProject = [this](const wchar_t* name) {
        calls.push_back("publish " + std::string(ToUtf8(name, -1).c_str()));
        return S_OK;
    };
}

std::wstring ProjectTest::Run() {
    try {
        RunPipeline(request,
                    {.log = log,
                     .statusSite = statusSite,
                     .kernel = openKernel,
                     .project = openProject,
                     .configuration = openConfiguration,
                     .importedProjectId = importedProjectId,
                     .documentFolder = documentFolder,
                     .language = language,
                     .documentHandler = documentHandler,
                     .specificationClass = specificationClass},
                    services);
    } catch (const wchar_t* failure) {
        return failure;
    } catch (const CString& failure) {
        return failure.GetString();
    } catch (COleException* failure) {
        wchar_t message[1024] = {};
        failure->GetErrorMessage(message, 1024);
        failure->Delete();
        return L"OLE: " + std::wstring(message);
    }
    return L"";
}

int ProjectTest::Count(const std::string& call) const {
    return static_cast<int>(CallsOf(calls, call).size());
}

} // namespace zt::test
