#include "project/ProjectArchive.h"

#include "components/Values.h"
#include "project/Pipeline.h"
#include "project/Start.h"

namespace zt {

namespace {

// Ways to open an archive.
constexpr long CreateNew = 0;
constexpr long ReadExisting = 2;

constexpr long WholeProject = -1;

// The name under which the archive holds the project.
_bstr_t NameInArchive(AutomationObject<Archive>& archive) {
    _variant_t projects = archive.Call<Archive::Projects>();
    const _bstr_t name = TextElement(projects, 0, 1);
    if (name.length() == 0)
        throw L"No project in source zip";
    ClearVariant(projects);
    return name;
}

// The folder of the configuration that holds the projects' representations.
std::wstring RepresentationsFolder(AutomationObject<Configuration>& configuration) {
    const _bstr_t workFolder = configuration.Call<Configuration::WorkFolder>();
    return std::wstring(OrEmpty(workFolder)) + L"\\Representations";
}

} // namespace

void OpenConfiguration(AutomationObject<Administration>& administration,
                       const std::wstring& projectName,
                       AutomationObject<Configuration>& configuration, PipelineServices& services) {
    configuration.Attach(
        administration.Call<Administration::OpenConfiguration>(projectName.c_str()));
    configuration.Call<Configuration::ClientName>(MakeText(ClientName));
    configuration.Call<Configuration::Open>();
    const _bstr_t file = configuration.Call<Configuration::ConfigurationFile>();
    if (FAILED(services.LoadConfiguration(OrEmpty(file))))
        throw L"Couldn't load configuration";
}

void ImportProject(AutomationObject<Administration>& administration,
                   const std::wstring& archivePath,
                   AutomationObject<Configuration>& configuration) {
    AutomationObject<Archive> archive(
        administration.Call<Administration::OpenArchive>(archivePath.c_str(), ReadExisting));
    const _bstr_t name = NameInArchive(archive);
    const std::wstring representations = RepresentationsFolder(configuration);
    const ComPtr<IDispatch> project =
        archive.Call<Archive::ExtractProject>(OrEmpty(name), representations.c_str());
    configuration.Call<Configuration::ImportProject>(project.Get());
}

_bstr_t ReadImportedProject(AutomationObject<Configuration>& configuration, _bstr_t& projectId) {
    _variant_t imported = configuration.Call<Configuration::ImportedProjects>();
    projectId = TextElement(imported, 0, 1);
    const _bstr_t revision = TextElement(imported, 0, 0);
    if (projectId.length() == 0)
        throw L"Project could not be imported into configuration";
    ClearVariant(imported);
    return revision;
}

void SaveProject(AutomationObject<Administration>& administration, const std::wstring& archivePath,
                 AutomationObject<Configuration>& configuration, KernelProject* project) {
    AutomationObject<Archive> archive(
        administration.Call<Administration::OpenArchive>(archivePath.c_str(), CreateNew));
    if (!archive)
        throw L"Can't create KVP-file";
    _bstr_t key;
    _bstr_t storedName;
    KernelProject::GetConfigurationKey::Call(project, key.GetAddress());
    KernelProject::GetStoredName::Call(project, storedName.GetAddress());
    const ComPtr<IDispatch> exported =
        configuration.Call<Configuration::ExportProject>(OrEmpty(key), WholeProject);
    const std::wstring representations = RepresentationsFolder(configuration);
    archive.Call<Archive::AddProject>(exported.Get(), OrEmpty(storedName), representations.c_str());
}

} // namespace zt
