#include "project/ImportStep.h"

#include "app/ZTInvisible.h"
#include "components/Values.h"
#include "project/StartStep.h"

namespace zt {

namespace {

constexpr long ReadExisting = 2;

// The name under which the archive holds the project; empty when it lists none.
_bstr_t NameInArchive(AutomationObject<Archive>& archive) {
    _variant_t projects = archive.Call<Archive::Projects>();
    const _bstr_t name = TextElement(projects, 0, 1);
    if (name.length() == 0)
        throw L"No project in source zip";
    ClearVariant(projects);
    return name;
}

} // namespace

std::wstring ArchivePath(const CZTInvisible& app, const std::wstring& projectName) {
    return app.m_strExchangePath + L"\\" + projectName + L".kvp";
}

std::wstring RepresentationsFolder(CZTInvisible& app) {
    const _bstr_t workFolder = app.m_configuration.Call<Configuration::WorkFolder>();
    return std::wstring(OrEmpty(workFolder)) + L"\\Representations";
}

void OpenConfiguration(CZTInvisible& app, AutomationObject<Administration>& administration,
                       const std::wstring& projectName, const PipelineServices& services) {
    app.m_configuration.Attach(
        administration.Call<Administration::OpenConfiguration>(projectName.c_str()));
    app.m_configuration.Call<Configuration::ClientName>(MakeText(ClientName));
    app.m_configuration.Call<Configuration::Open>();
    const _bstr_t file = app.m_configuration.Call<Configuration::ConfigurationFile>();
    if (FAILED(services.loadConfiguration(app, OrEmpty(file))))
        throw L"Couldn't load configuration";
}

void ImportProject(CZTInvisible& app, AutomationObject<Administration>& administration,
                   const std::wstring& projectName) {
    AutomationObject<Archive> archive(administration.Call<Administration::OpenArchive>(
        ArchivePath(app, projectName).c_str(), ReadExisting));
    const _bstr_t name = NameInArchive(archive);
    const std::wstring representations = RepresentationsFolder(app);
    const ComPtr<IDispatch> project =
        archive.Call<Archive::ExtractProject>(OrEmpty(name), representations.c_str());
    app.m_configuration.Call<Configuration::ImportProject>(project.Get());
}

_bstr_t ReadImportedProject(CZTInvisible& app) {
    _variant_t imported = app.m_configuration.Call<Configuration::ImportedProjects>();
    app.m_bstrImportedProjectId = TextElement(imported, 0, 1);
    const _bstr_t revision = TextElement(imported, 0, 0);
    if (app.m_bstrImportedProjectId.length() == 0)
        throw L"Project could not be imported into configuration";
    ClearVariant(imported);
    return revision;
}

} // namespace zt
