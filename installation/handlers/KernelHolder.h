#pragma once

#include "installation/handlers/HandlerContracts.h"

#include <wrl/client.h>

namespace devinst {

// "KVDev.SequenceNumbers" and "KVDev.Notifications": keep the kernel that they are given until they
// are released or given another.
class KernelHolder final : public StandIn {
  public:
    explicit KernelHolder(const char* className);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

    HRESULT On(KernelUser::PutKernel, IDispatch* kernel);
    HRESULT On(KernelUser::PutRefKernel, IDispatch* kernel);

  private:
    ~KernelHolder() override = default;

    Microsoft::WRL::ComPtr<IDispatch> m_kernel;
};

} // namespace devinst
