#pragma once

#include "components/contracts/Administration.h"
#include "installation/runtime/StandIn.h"

namespace devinst {

// "KV.Admin".
class AdministrationObject final : public StandIn {
  public:
    AdministrationObject();

    HRESULT On(zt::Administration::OpenArchive, BSTR path, LONG mode, IDispatch** archive);
    HRESULT On(zt::Administration::OpenConfiguration, BSTR project, IDispatch** configuration);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;
};

} // namespace devinst
