#pragma once

#include "components/contracts/Administration.h"
#include "installation/runtime/StandIn.h"

#include <filesystem>
#include <string>

namespace devinst {

// A project archive (".kvp"), read or written anew.
class ArchiveObject final : public StandIn {
  public:
    ArchiveObject(std::filesystem::path path, bool writes);

    HRESULT On(zt::Archive::Projects, VARIANT* projects);
    HRESULT On(zt::Archive::ExtractProject, BSTR name, BSTR representations, IDispatch** project);
    HRESULT On(zt::Archive::AddProject, IDispatch* project, BSTR storedName, BSTR representations);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    std::filesystem::path m_path;
    bool m_writes;
};

} // namespace devinst
