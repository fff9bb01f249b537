#include "project/SaveStep.h"

#include "app/ZTInvisible.h"
#include "components/Values.h"
#include "project/ImportStep.h"

namespace zt {

namespace {

constexpr LONG SaveToArchive = 1;
constexpr long CreateNew = 0;
constexpr long WholeProject = -1;

void AddToArchive(CZTInvisible& app, AutomationObject<Archive>& archive) {
    KernelProject* const project = app.m_pKernelProject.Get();
    _bstr_t key;
    _bstr_t storedName;
    KernelProject::GetConfigurationKey::Call(project, key.GetAddress());
    KernelProject::GetStoredName::Call(project, storedName.GetAddress());
    const ComPtr<IDispatch> exported =
        app.m_configuration.Call<Configuration::ExportProject>(OrEmpty(key), WholeProject);
    const std::wstring representations = RepresentationsFolder(app);
    archive.Call<Archive::AddProject>(exported.Get(), OrEmpty(storedName), representations.c_str());
}

// The archive is released, and so complete, when this returns.
void WriteArchive(CZTInvisible& app, AutomationObject<Administration>& administration,
                  const std::wstring& path) {
    AutomationObject<Archive> archive(
        administration.Call<Administration::OpenArchive>(path.c_str(), CreateNew));
    if (!archive)
        throw L"Can't create KVP-file";
    AddToArchive(app, archive);
}

} // namespace

void SaveProject(CZTInvisible& app, AutomationObject<Administration>& administration,
                 const std::wstring& projectName) {
    KernelAdmin::SetSaveMode::Call(app.m_pKernelAdmin.Get(), SaveToArchive);
    WriteArchive(app, administration, ArchivePath(app, projectName));
    app.Log(L"Project saved to KVP file\n");
}

} // namespace zt
