#include "project/Start.h"

#include "components/Creation.h"
#include "components/Values.h"

namespace zt {

void CreateKernelAdmin(ComPtr<KernelAdmin>& kernel) {
    // Whatever the result code says, only the object counts.
    Create<KernelAdmin>(CLSID_KernelAdmin, kernel.ReleaseAndGetAddressOf());
    if (kernel == nullptr)
        throw L"Couldn't load KV Kernel";
}

ComPtr<IObjectWithSite> ConnectStatusSite(KernelAdmin* kernel, CStatusDispSite* statusSite) {
    ComPtr<IObjectWithSite> kernelSite = Query<IObjectWithSite>(kernel);
    if (kernelSite != nullptr)
        kernelSite->SetSite(static_cast<IOleClientSite*>(statusSite));
    return kernelSite;
}

void IntroduceClient(KernelAdmin* kernel) {
    const _bstr_t name = MakeText(ClientName);
    KernelAdmin::PutClientName::Call(kernel, Borrow(name));
}

void CreateAdministration(AutomationObject<Administration>& administration) {
    if (!administration.CreateDispatch(Administration::ProgId))
        throw L"Couldn't create KVAdmin";
}

} // namespace zt
