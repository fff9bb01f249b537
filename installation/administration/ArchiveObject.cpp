#include "installation/administration/ArchiveObject.h"

#include "installation/administration/ProjectTable.h"
#include "installation/administration/TransferObjects.h"
#include "installation/model/ProjectFiles.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"
#include "installation/runtime/Ref.h"

#include <utility>

namespace devinst {

namespace fs = std::filesystem;

ArchiveObject::ArchiveObject(fs::path path, bool writes)
    : StandIn(zt::Archive::Name), m_path(std::move(path)), m_writes(writes) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ArchiveObject>());
}

// An archive that is broken or empty lists no projects.
HRESULT ArchiveObject::On(zt::Archive::Projects, VARIANT* projects) {
    try {
        ZipReader archive(m_path);
        const XmlFile index = ReadIndex(archive);
        const XmlElement project = ProjectOf(index);
        GiveProjectTable(Attribute(project, L"id"), Attribute(project, L"name"), projects);
    } catch (const ZipError&) {
        return S_OK;
    } catch (const ComFailure&) {
        return S_OK;
    }
    return S_OK;
}

HRESULT ArchiveObject::On(zt::Archive::ExtractProject, BSTR name, BSTR representations,
                          IDispatch** project) {
    ZipReader archive(m_path);
    const XmlFile index = ReadIndex(archive);
    const XmlElement found = ProjectOf(index);
    if (name == nullptr || Attribute(found, L"name") != name)
        throw ComFailure{E_INVALIDARG, L"The archive has no such project."};
    if (SysStringLen(representations) == 0)
        throw ComFailure{E_INVALIDARG, L"There is no folder for the representations."};
    UnpackRepresentations(archive, fs::path(representations) / Attribute(found, L"id"));
    *project = Ref<ExtractedProjectObject>::Make(m_path).Detach<IDispatch>();
    return S_OK;
}

HRESULT ArchiveObject::On(zt::Archive::AddProject, IDispatch* project, BSTR storedName,
                          BSTR representations) {
    const auto exported = RefOf<ExportedProjectObject>(project);
    if (!m_writes || !exported || SysStringLen(storedName) == 0 ||
        SysStringLen(representations) == 0)
        throw ComFailure{E_INVALIDARG, L"The project cannot be added to the archive."};
    const XmlFile index = XmlFile::FromFile(exported->Folder() / L"index.xml");
    SetAttribute(ProjectOf(index), L"storedName", storedName);
    index.Save(exported->Folder() / L"index.xml");
    PackProject(m_path, exported->Folder(),
                fs::path(representations) / Attribute(ProjectOf(index), L"id"));
    return S_OK;
}

HRESULT ArchiveObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<zt::Archive>(name, id);
}

HRESULT ArchiveObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                                      EXCEPINFO* exception) {
    return InvokeByContract<zt::Archive>(*this, id, kind, parameters, result, exception);
}

} // namespace devinst
