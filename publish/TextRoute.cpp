#include "app/ZTInvisible.h"
#include "components/Values.h"
#include "publish/ComponentSettings.h"
#include "publish/PublicationData.h"
#include "publish/Routes.h"

namespace zt {

void PublishThroughText(CZTInvisible& app, const std::wstring& projectName,
                        const std::wstring& destination) {
    const ComPtr<Component3D> component = CreateComponent3D();
    const _bstr_t specification = AskSpecificationFileName(app.m_pKernelAdmin.Get());

    Component3D::PutLanguage::Call(component.Get(), Borrow(app.m_bstrLanguage));
    Component3D::PutSpecificationFileName::Call(component.Get(), Borrow(specification));
    LoadProductSettings(component.Get(), app.m_pStatusSite.Get(), L"Components\\KV3D");
    Component3D::PutOptionC::Call(component.Get(), 0);

    const std::wstring name = TextPublicationName(AskSecondName(app), projectName);
    if (FAILED(Component3D::PublishText::Call(component.Get(), app.m_pKernelAdmin.Get(),
                                              Borrow(MakeText(destination)), Borrow(MakeText(name)),
                                              _variant_t(0L, VT_I4))))
        throw L"Error publishing project";
}

} // namespace zt
