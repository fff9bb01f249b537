#include "installation/kernel/KernelAdminObject.h"

#include "components/ComponentIds.h"
#include "installation/kernel/KernelProjectObject.h"
#include "installation/model/InstallationSettings.h"
#include "installation/model/Xml.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"

#include <string_view>

namespace devinst {

namespace fs = std::filesystem;

namespace {

constexpr LONG AllProjects = -1;
constexpr LONG SaveAtOnce = 1;
constexpr LONG ProductCodes[] = {13, 11, 3, 127, 141};
// A failure of the command templates' own facility.
constexpr HRESULT DamagedTemplates = static_cast<HRESULT>(0x80400001);

// An argument that the kernel does not know the meaning of is refused.
HRESULT Expect(bool known) {
    return known ? S_OK : E_INVALIDARG;
}

XmlFile LoadLibraryFile(BSTR path) {
    if (path == nullptr || !fs::is_regular_file(path))
        throw ComFailure{HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), L"A library file is missing."};
    return XmlFile::FromFile(path);
}

struct OpenPath {
    std::wstring id;
    std::wstring revision;
};

// "ID/new/REVISION"
bool ParseOpenPath(std::wstring_view text, OpenPath& path) {
    constexpr std::wstring_view Separator = L"/new/";
    const std::size_t at = text.find(Separator);
    if (at == std::wstring_view::npos)
        return false;
    path.id = text.substr(0, at);
    path.revision = text.substr(at + Separator.size());
    return true;
}

} // namespace

KernelAdminObject::KernelAdminObject() : StandIn(zt::KernelAdmin::Name) {
    Face* const face =
        AddFace(IID_KernelAdmin, FunctionTable<zt::KernelAdmin, KernelAdminObject>());
    AddInterface(IID_IDispatch, face);
    AddFace(IID_IObjectWithSite, FunctionTable<ObjectWithSite, KernelAdminObject>());
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::ShutDown, LONG projects) {
    m_host.Set(nullptr);
    return Expect(projects == AllProjects);
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::LoadTypes, BSTR path) {
    LoadLibraryFile(path);
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::LoadDeclarations, BSTR path) {
    LoadLibraryFile(path);
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::SetSaveMode, LONG mode) {
    if (mode != SaveAtOnce)
        return E_INVALIDARG;
    if (m_project != nullptr)
        m_project->Save();
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::CloseProjects, LONG projects) {
    if (projects != AllProjects)
        return E_INVALIDARG;
    m_project = nullptr;
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::PutClientName, BSTR name) {
    return Expect(SysStringLen(name) != 0);
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::SetProjectsLocation, BSTR folder) {
    if (SysStringLen(folder) == 0)
        return S_FALSE;
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (!fs::is_directory(folder))
        return E_ACCESSDENIED;
    m_projectsLocation = folder;
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::OpenProject, LONG mode, BSTR openPath,
                              zt::KernelProject** project) {
    OpenPath path;
    if (mode != AllProjects || openPath == nullptr || !ParseOpenPath(openPath, path))
        return E_INVALIDARG;
    const fs::path location =
        m_projectsLocation.empty() ? WorkFolderPath() / L"Projects" : m_projectsLocation;
    Ref<KernelProjectObject> opened =
        Ref<KernelProjectObject>::Make(Ref<KernelAdminObject>(this), location / path.id);
    if (opened->Revision() != path.revision)
        throw ComFailure{E_FAIL, L"The project has no revision " + path.revision};
    m_project = opened.Get();
    *project = opened.Detach<zt::KernelProject>();
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::LoadRefTables, BSTR path) {
    LoadLibraryFile(path);
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::LoadMetadata, BSTR path) {
    const XmlFile file = LoadLibraryFile(path);
    for (const XmlElement& declaration : Children(file.Root(), L"declaration"))
        m_declared.insert(Attribute(declaration, L"name"));
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::LoadCommandTemplates, BSTR path) {
    if (path == nullptr || !fs::is_regular_file(path))
        return HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND);
    try {
        XmlFile::FromFile(path);
    } catch (const ComFailure& failure) {
        throw ComFailure{DamagedTemplates, failure.description};
    }
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::GetSpecificationFolder, BSTR* folder) {
    *folder = SysAllocString(m_specificationFolder.c_str());
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::PutSpecificationFolder, BSTR folder) {
    m_specificationFolder = folder != nullptr ? folder : L"";
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::LoadRefTablesBackup, BSTR path) {
    LoadLibraryFile(path);
    return S_OK;
}

HRESULT KernelAdminObject::On(zt::KernelAdmin::SelectProduct, LONG product) {
    for (const LONG code : ProductCodes) {
        if (code == product)
            return S_OK;
    }
    return E_INVALIDARG;
}

HRESULT KernelAdminObject::On(ObjectWithSite::SetSite, IUnknown* site) {
    m_host.Set(site);
    return S_OK;
}

HRESULT KernelAdminObject::On(ObjectWithSite::GetSite, REFIID iid, void** site) {
    return m_host.Site() != nullptr ? m_host.Site()->QueryInterface(iid, site) : E_FAIL;
}

HRESULT KernelAdminObject::On(KernelScripting::CurrentProject, IDispatch** project) {
    if (m_project != nullptr)
        *project = Ref<KernelProjectObject>(m_project).Detach<IDispatch>();
    return S_OK;
}

HRESULT KernelAdminObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<KernelScripting>(name, id);
}

HRESULT KernelAdminObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                          VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<KernelScripting>(*this, id, kind, parameters, result, exception);
}

void KernelAdminObject::Forget(const KernelProjectObject* project) {
    if (m_project == project)
        m_project = nullptr;
}

} // namespace devinst
