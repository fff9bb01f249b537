#include "project/Start.h"

#include "components/ComponentIds.h"
#include "components/Creation.h"
#include "components/Texts.h"

namespace zt {

void CreateKernelAdmin(ComPtr<KernelAdmin>& kernel) {
    // Whatever the result code says, only the object counts.
    CoCreateInstance(CLSID_KernelAdmin, nullptr, AllServers, IID_KernelAdmin,
                     reinterpret_cast<void**>(kernel.ReleaseAndGetAddressOf()));
    if (kernel == nullptr)
        throw L"Couldn't load KV Kernel";
}

ComPtr<IObjectWithSite> ConnectStatusSite(const ComPtr<KernelAdmin>& kernel,
                                          CStatusDispSite* statusSite) {
    ComPtr<IObjectWithSite> kernelSite;
    kernel.As(&kernelSite);
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
