#include "app/ZTInvisible.h"
#include "components/ByName.h"
#include "components/Installation.h"
#include "components/Values.h"
#include "publish/ComponentSettings.h"
#include "publish/PublicationData.h"
#include "publish/ReferencedObjects.h"
#include "publish/Routes.h"
#include "publish/ViewerHost.h"

namespace zt {

namespace {

// A viewer without the property is used as it is.
void HaveNodesValidated(IDispatch* viewer) {
    // The viewer takes the 16-bit integer, not the boolean of the same value.
    const _variant_t yes(static_cast<short>(-1), VT_I2);
    PutPropertyByName(viewer, L"ValidateNodes", &yes);
}

void Configure(Component3D* component, CZTInvisible& app, IDispatch* viewer) {
    const bool isLearning = FactsOf(app.m_specificationClass).isLearning;
    Component3D::PutKernel::Call(component, app.m_pKernelAdmin.Get());
    Component3D::PutViewer::Call(component, viewer);
    Component3D::PutResourceTag::Call(component, Borrow(MakeText(L"#res#")));
    Component3D::PutLearningMode::Call(component, isLearning ? VARIANT_TRUE : VARIANT_FALSE);

    const _bstr_t specification = AskSpecificationFileName(app.m_pKernelAdmin.Get());
    Component3D::PutLanguage::Call(component, Borrow(app.m_bstrLanguage));
    Component3D::PutSpecificationFileName::Call(component, Borrow(specification));
    LoadProductSettings(component, app.m_pStatusSite.Get(), L"Components\\KV3D");
    if (app.m_bstrAxesModelPath.length() != 0) {
        const std::wstring folder = AxesFolder(GetDataFolder(), OrEmpty(app.m_bstrAxesModelPath));
        Component3D::PutAxesFolder::Call(component, Borrow(MakeText(folder)));
    }
}

[[noreturn]] void RaisePublishFailure() {
    const std::wstring description = TakeErrorInfo();
    throw CString(L"Error publishing project" +
                  (description.empty() ? description : L":\n" + description));
}

} // namespace

void PublishThroughViewer(CZTInvisible& app, const std::wstring& projectName,
                          const std::wstring& destination) {
    ViewerHost host;
    const ComPtr<IDispatch> viewer = host.Viewer();
    const ComPtr<Component3D> component = CreateComponent3D();
    HaveNodesValidated(viewer.Get());
    Configure(component.Get(), app, viewer.Get());
    AnnounceReferencedObjects(component.Get(), app.m_pKernelProject.Get());

    Component3D::PutOptionC::Call(component.Get(), 0);
    const std::wstring first = AskFirstName(app);
    const PublicationNames names = CompleteNames({first, AskSecondName(app)}, projectName);
    ClearErrorInfo();
    if (FAILED(Component3D::PublishView::Call(
            component.Get(), Borrow(MakeText(destination)), Borrow(MakeText(names.first)),
            Borrow(MakeText(names.second)), 1, 0, _variant_t(0L, VT_I4))))
        RaisePublishFailure();
    Component3D::PutViewer::Call(component.Get(), nullptr);
}

} // namespace zt
