#include "installation/administration/ConfigurationObject.h"

#include "installation/administration/ProjectTable.h"
#include "installation/administration/TransferObjects.h"
#include "installation/model/InstallationSettings.h"
#include "installation/model/ProjectFiles.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"
#include "installation/runtime/Ref.h"

namespace devinst {

namespace fs = std::filesystem;

ConfigurationObject::ConfigurationObject() : StandIn(zt::Configuration::Name) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ConfigurationObject>());
}

HRESULT ConfigurationObject::On(zt::Configuration::WorkFolder, BSTR* folder) {
    *folder = SysAllocString(WorkFolderPath().c_str());
    return S_OK;
}

HRESULT ConfigurationObject::On(zt::Configuration::ImportedProjects, VARIANT* projects) {
    if (!m_importedId.empty())
        GiveProjectTable(m_importedRevision, m_importedId, projects);
    return S_OK;
}

HRESULT ConfigurationObject::On(zt::Configuration::ConfigurationFile, BSTR* path) {
    *path = SysAllocString(ConfigurationFilePath().c_str());
    return S_OK;
}

HRESULT ConfigurationObject::On(zt::Configuration::ClientName, BSTR name) {
    return SysStringLen(name) != 0 ? S_OK : E_INVALIDARG;
}

HRESULT ConfigurationObject::On(zt::Configuration::Open) {
    m_open = true;
    return S_OK;
}

HRESULT ConfigurationObject::On(zt::Configuration::Close, VARIANT_BOOL) {
    m_open = false;
    return S_OK;
}

HRESULT ConfigurationObject::On(zt::Configuration::ExportProject, BSTR key, LONG revision,
                                IDispatch** project) {
    RequireOpen();
    const fs::path folder = WorkFolderPath() / L"Projects" / (key != nullptr ? key : L"");
    if (revision != -1 || SysStringLen(key) == 0 || !fs::is_directory(folder))
        throw ComFailure{E_INVALIDARG, L"The configuration has no such project."};
    *project = Ref<ExportedProjectObject>::Make(folder).Detach<IDispatch>();
    return S_OK;
}

HRESULT ConfigurationObject::On(zt::Configuration::ImportProject, IDispatch* project) {
    RequireOpen();
    const auto extracted = RefOf<ExtractedProjectObject>(project);
    if (!extracted)
        throw ComFailure{E_INVALIDARG, L"There is no project to import."};
    ZipReader archive(extracted->ArchivePath());
    const XmlFile index = ReadIndex(archive);
    const std::wstring id = Attribute(ProjectOf(index), L"id");
    UnpackProject(archive, WorkFolderPath() / L"Projects" / id);
    m_importedId = id;
    m_importedRevision = Attribute(ProjectOf(index), L"revision");
    return S_OK;
}

HRESULT ConfigurationObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<zt::Configuration>(name, id);
}

HRESULT ConfigurationObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                            VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<zt::Configuration>(*this, id, kind, parameters, result, exception);
}

void ConfigurationObject::RequireOpen() const {
    if (!m_open)
        throw ComFailure{E_UNEXPECTED, L"The configuration is not open."};
}

} // namespace devinst
