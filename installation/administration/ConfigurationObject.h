#pragma once

#include "components/contracts/Administration.h"
#include "installation/runtime/StandIn.h"

#include <string>

namespace devinst {

// The configuration of one project: imports projects into the work folder and hands them out again.
class ConfigurationObject final : public StandIn {
  public:
    ConfigurationObject();

    HRESULT On(zt::Configuration::WorkFolder, BSTR* folder);
    HRESULT On(zt::Configuration::ImportedProjects, VARIANT* projects);
    HRESULT On(zt::Configuration::ConfigurationFile, BSTR* path);
    HRESULT On(zt::Configuration::ClientName, BSTR name);
    HRESULT On(zt::Configuration::Open);
    HRESULT On(zt::Configuration::Close, VARIANT_BOOL save);
    HRESULT On(zt::Configuration::ExportProject, BSTR key, LONG revision, IDispatch** project);
    HRESULT On(zt::Configuration::ImportProject, IDispatch* project);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    void RequireOpen() const;

    bool m_open = false;
    std::wstring m_importedId;
    std::wstring m_importedRevision;
};

} // namespace devinst
