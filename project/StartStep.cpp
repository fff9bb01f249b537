#include "project/StartStep.h"

#include "app/ZTInvisible.h"
#include "components/Creation.h"
#include "components/Values.h"
#include "project/StatusDispSite.h"

namespace zt {

void CreateStatusSite(CZTInvisible& app) {
    app.m_pStatusSite = new CStatusDispSite(&app);
}

void CreateKernelAdmin(CZTInvisible& app) {
    // Whatever the result code says, only the object counts.
    Create<KernelAdmin>(CLSID_KernelAdmin, app.m_pKernelAdmin.ReleaseAndGetAddressOf());
    if (app.m_pKernelAdmin == nullptr)
        throw L"Couldn't load KV Kernel";
}

ComPtr<IObjectWithSite> ConnectStatusSite(CZTInvisible& app) {
    ComPtr<IObjectWithSite> kernelSite = Query<IObjectWithSite>(app.m_pKernelAdmin.Get());
    if (kernelSite != nullptr)
        kernelSite->SetSite(static_cast<IOleClientSite*>(app.m_pStatusSite.Get()));
    return kernelSite;
}

void IntroduceClient(CZTInvisible& app) {
    const _bstr_t name = MakeText(ClientName);
    KernelAdmin::PutClientName::Call(app.m_pKernelAdmin.Get(), Borrow(name));
}

void CreateAdministration(AutomationObject<Administration>& administration) {
    if (!administration.CreateDispatch(Administration::ProgId))
        throw L"Couldn't create KVAdmin";
}

} // namespace zt
