#include "publish/Routes.h"

#include "components/Automation.h"
#include "components/ByName.h"
#include "components/Creation.h"
#include "components/Values.h"
#include "components/contracts/Publishing.h"
#include "framework/String.h"
#include "framework/Wnd.h"
#include "publish/PublicationRules.h"
#include "publish/PublishProject.h"
#include "publish/ReferencedObjects.h"

#include <ocidl.h>

namespace zt {

namespace {

// ---- what several routes read ----

// Name of the description file of the specification that the kernel has loaded.
_bstr_t QuerySpecificationFileName(KernelAdmin* kernel) {
    _bstr_t folder;
    KernelAdmin::GetSpecificationFolder::Call(kernel, folder.GetAddress());
    return MakeText(SpecificationFileName(OrEmpty(folder)));
}

// A name that the export handler gives the publication; empty where there is none.
template <typename Operation>
std::wstring QueryName(const Publication& publication) {
    _bstr_t name;
    if (publication.exportHandler != nullptr)
        Operation::Call(publication.exportHandler, publication.project, name.GetAddress());
    return OrEmpty(name);
}

std::wstring QueryFirstName(const Publication& publication) {
    return QueryName<ExportHandler::GetFirstName>(publication);
}

std::wstring QuerySecondName(const Publication& publication) {
    return QueryName<ExportHandler::GetSecondName>(publication);
}

// ---- the exporter ----

ComPtr<Exporter> CreateExporter() {
    ComPtr<Exporter> exporter;
    if (FAILED(Create<Exporter>(CLSID_Exporter, exporter.GetAddressOf())) || !exporter)
        throw L"Couldn't load IPC Exporter";
    return exporter;
}

void SetSite(Exporter* exporter, IOleClientSite* site) {
    if (const auto sited = Query<IObjectWithSite>(exporter); sited)
        sited->SetSite(site);
}

// ---- the 3D component ----

constexpr wchar_t Settings3D[] = L"Components\\KV3D";

ComPtr<Component3D> CreateComponent3D() {
    ComPtr<Component3D> component;
    if (FAILED(Create<Component3D>(Component3D::ProgId, nullptr, AllServers,
                                   component.GetAddressOf())))
        throw L"Can't create KV3D";
    return component;
}

void Configure(Component3D* component, const Publication& publication) {
    const _bstr_t specification = QuerySpecificationFileName(publication.kernel);
    Component3D::PutLanguage::Call(component, Borrow(publication.language));
    Component3D::PutSpecificationFileName::Call(component, Borrow(specification));
    LoadProductSettings(component, publication.settings, Settings3D);
}

// ---- the viewer ----

// The viewer of the hosted control; null without a control. Raises the framework's OLE exception
// where the control refuses it.
ComPtr<IDispatch> ViewerOf(const HiddenControl& host) {
    const ComPtr<IDispatch> control = Query<IDispatch>(host.Get());
    // Without a control the call does nothing and gives null.
    return AutomationObject<ViewerControl>(control).Call<ViewerControl::Viewer>();
}

// A viewer without the property is used as it is.
void EnableNodeValidation(IDispatch* viewer) {
    // The viewer takes the 16-bit integer, not the boolean of the same value.
    const _variant_t yes(static_cast<short>(-1), VT_I2);
    PutPropertyByName(viewer, L"ValidateNodes", &yes);
}

void ConfigureWithViewer(Component3D* component, const Publication& publication,
                         IDispatch* viewer) {
    const bool isLearning = FactsOf(publication.specificationClass).isLearning;
    Component3D::PutKernel::Call(component, publication.kernel);
    Component3D::PutViewer::Call(component, viewer);
    Component3D::PutResourceTag::Call(component, Borrow(MakeText(L"#res#")));
    Component3D::PutLearningMode::Call(component, isLearning ? VARIANT_TRUE : VARIANT_FALSE);
    Configure(component, publication);
    if (publication.axesModelPath.length() != 0) {
        const std::wstring folder =
            AxesFolder(publication.dataFolder, OrEmpty(publication.axesModelPath));
        Component3D::PutAxesFolder::Call(component, Borrow(MakeText(folder)));
    }
}

[[noreturn]] void RaisePublishFailure() {
    const std::wstring description = TakeErrorInfo();
    throw CString(L"Error publishing project" +
                  (description.empty() ? description : L":\n" + description));
}

} // namespace

void PublishThroughExporter(const Publication& publication, const std::wstring& destination) {
    const ComPtr<Exporter> exporter = CreateExporter();
    SetSite(exporter.Get(), publication.site);
    const _bstr_t specification = QuerySpecificationFileName(publication.kernel);

    Exporter::PutLanguage::Call(exporter.Get(), Borrow(publication.language));
    Exporter::PutSpecificationFileName::Call(exporter.Get(), Borrow(specification));
    LoadProductSettings(exporter.Get(), publication.settings, L"Components\\Exporter");
    Exporter::PutAxesModelPath::Call(exporter.Get(), Borrow(publication.axesModelPath));
    Exporter::PutAxesPosition::Call(exporter.Get(), static_cast<LONG>(publication.axesPosition));
    Exporter::PutKernel::Call(exporter.Get(), publication.kernel);
    Exporter::PutDestinationFolder::Call(exporter.Get(), Borrow(MakeText(destination)));
    Exporter::PutOptionA::Call(exporter.Get(), 0);
    Exporter::PutOptionB::Call(exporter.Get(), 0);

    ClearErrorInfo();
    if (FAILED(Exporter::Export::Call(exporter.Get())))
        throw CString(L"ERROR publishing project: " + TakeErrorInfo());
}

void PublishThroughText(const Publication& publication, const std::wstring& destination) {
    const ComPtr<Component3D> component = CreateComponent3D();
    Configure(component.Get(), publication);
    Component3D::PutOptionC::Call(component.Get(), 0);

    const std::wstring name =
        TextPublicationName(QuerySecondName(publication), publication.projectName);
    if (FAILED(Component3D::PublishText::Call(component.Get(), publication.kernel,
                                              Borrow(MakeText(destination)), Borrow(MakeText(name)),
                                              _variant_t(0L, VT_I4))))
        throw L"Error publishing project";
}

void PublishThroughViewer(const Publication& publication, const std::wstring& destination) {
    HiddenControl host(ViewerControl::ProgId);
    const ComPtr<IDispatch> viewer = ViewerOf(host);
    const ComPtr<Component3D> component = CreateComponent3D();
    EnableNodeValidation(viewer.Get());
    ConfigureWithViewer(component.Get(), publication, viewer.Get());
    AnnounceReferencedObjects(component.Get(), publication.project);

    Component3D::PutOptionC::Call(component.Get(), 0);
    const std::wstring first = QueryFirstName(publication);
    const PublicationNames names =
        CompleteNames({first, QuerySecondName(publication)}, publication.projectName);
    ClearErrorInfo();
    if (FAILED(Component3D::PublishView::Call(
            component.Get(), Borrow(MakeText(destination)), Borrow(MakeText(names.first)),
            Borrow(MakeText(names.second)), 1, 0, _variant_t(0L, VT_I4))))
        RaisePublishFailure();
    Component3D::PutViewer::Call(component.Get(), nullptr);
}

} // namespace zt
