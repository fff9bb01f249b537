#pragma once

#include "components/contracts/Kernel.h"
#include "installation/kernel/Host.h"
#include "installation/kernel/Scripting.h"
#include "installation/runtime/ObjectWithSite.h"
#include "installation/runtime/Ref.h"
#include "installation/runtime/StandIn.h"

#include <filesystem>
#include <set>
#include <string>

namespace devinst {

class KernelProjectObject;

// The kernel's administration interface: opens the projects of the projects' location, loads a
// specification's library files and keeps the metadata names that they declare.
class KernelAdminObject final : public StandIn {
  public:
    KernelAdminObject();

    HRESULT On(zt::KernelAdmin::ShutDown, LONG projects);
    HRESULT On(zt::KernelAdmin::LoadTypes, BSTR path);
    HRESULT On(zt::KernelAdmin::LoadDeclarations, BSTR path);
    HRESULT On(zt::KernelAdmin::SetSaveMode, LONG mode);
    HRESULT On(zt::KernelAdmin::CloseProjects, LONG projects);
    HRESULT On(zt::KernelAdmin::PutClientName, BSTR name);
    HRESULT On(zt::KernelAdmin::SetProjectsLocation, BSTR folder);
    HRESULT On(zt::KernelAdmin::OpenProject, LONG mode, BSTR openPath, zt::KernelProject** project);
    HRESULT On(zt::KernelAdmin::LoadRefTables, BSTR path);
    HRESULT On(zt::KernelAdmin::LoadMetadata, BSTR path);
    HRESULT On(zt::KernelAdmin::LoadCommandTemplates, BSTR path);
    HRESULT On(zt::KernelAdmin::GetSpecificationFolder, BSTR* folder);
    HRESULT On(zt::KernelAdmin::PutSpecificationFolder, BSTR folder);
    HRESULT On(zt::KernelAdmin::LoadRefTablesBackup, BSTR path);
    HRESULT On(zt::KernelAdmin::SelectProduct, LONG product);

    HRESULT On(ObjectWithSite::SetSite, IUnknown* site);
    HRESULT On(ObjectWithSite::GetSite, REFIID iid, void** site);

    HRESULT On(KernelScripting::CurrentProject, IDispatch** project);
    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

    Host& TheHost() { return m_host; }
    bool Declares(const std::wstring& name) const { return m_declared.contains(name); }
    const std::wstring& SpecificationFolder() const { return m_specificationFolder; }

    // The project that was opened last and not closed; null when there is none.
    KernelProjectObject* CurrentProject() const { return m_project; }
    // A project tells when it goes.
    void Forget(const KernelProjectObject* project);

  private:
    std::filesystem::path m_projectsLocation;
    std::wstring m_specificationFolder;
    std::set<std::wstring> m_declared;
    Host m_host;
    KernelProjectObject* m_project = nullptr;
};

} // namespace devinst
