#include "app/ZTInvisible.h"
#include "components/Creation.h"
#include "components/Values.h"
#include "components/contracts/Publishing.h"
#include "project/StatusDispSite.h"
#include "publish/ComponentSettings.h"
#include "publish/PublicationData.h"
#include "publish/Routes.h"

#include <ocidl.h>

namespace zt {

namespace {

ComPtr<Exporter> CreateExporter() {
    ComPtr<Exporter> exporter;
    if (FAILED(Create<Exporter>(CLSID_Exporter, exporter.GetAddressOf())) || !exporter)
        throw L"Couldn't load IPC Exporter";
    return exporter;
}

void GiveSite(Exporter* exporter, CStatusDispSite* site) {
    if (const auto sited = Query<IObjectWithSite>(exporter); sited)
        sited->SetSite(static_cast<IOleClientSite*>(site));
}

} // namespace

void PublishThroughExporter(CZTInvisible& app, const std::wstring& destination) {
    const ComPtr<Exporter> exporter = CreateExporter();
    GiveSite(exporter.Get(), app.m_pStatusSite.Get());
    const _bstr_t specification = AskSpecificationFileName(app.m_pKernelAdmin.Get());

    Exporter::PutLanguage::Call(exporter.Get(), Borrow(app.m_bstrLanguage));
    Exporter::PutSpecificationFileName::Call(exporter.Get(), Borrow(specification));
    LoadProductSettings(exporter.Get(), app.m_pStatusSite.Get(), L"Components\\Exporter");
    Exporter::PutAxesModelPath::Call(exporter.Get(), Borrow(app.m_bstrAxesModelPath));
    Exporter::PutAxesPosition::Call(exporter.Get(), static_cast<LONG>(app.m_axesPosition));
    Exporter::PutKernel::Call(exporter.Get(), app.m_pKernelAdmin.Get());
    Exporter::PutDestinationFolder::Call(exporter.Get(), Borrow(MakeText(destination)));
    Exporter::PutOptionA::Call(exporter.Get(), 0);
    Exporter::PutOptionB::Call(exporter.Get(), 0);

    ClearErrorInfo();
    if (FAILED(Exporter::Export::Call(exporter.Get())))
        throw CString(L"ERROR publishing project: " + TakeErrorInfo());
}

} // namespace zt
