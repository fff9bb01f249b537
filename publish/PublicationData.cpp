#include "publish/PublicationData.h"

#include "app/ZTInvisible.h"
#include "components/Creation.h"
#include "components/Values.h"

namespace zt {

using Microsoft::WRL::ComPtr;

namespace {

template <typename Operation>
std::wstring AskName(CZTInvisible& app) {
    _bstr_t name;
    if (app.m_pExportHandler)
        Operation::Call(app.m_pExportHandler.Get(), app.m_pKernelProject.Get(), name.GetAddress());
    return OrEmpty(name);
}

} // namespace

ComPtr<Component3D> CreateComponent3D() {
    ComPtr<Component3D> component;
    if (FAILED(Create<Component3D>(Component3D::ProgId, nullptr, AllServers,
                                   component.GetAddressOf())))
        throw L"Can't create KV3D";
    return component;
}

_bstr_t AskSpecificationFileName(KernelAdmin* kernel) {
    _bstr_t folder;
    KernelAdmin::GetSpecificationFolder::Call(kernel, folder.GetAddress());
    return MakeText(SpecificationFileName(OrEmpty(folder)));
}

std::wstring AskFirstName(CZTInvisible& app) {
    return AskName<ExportHandler::GetFirstName>(app);
}

std::wstring AskSecondName(CZTInvisible& app) {
    return AskName<ExportHandler::GetSecondName>(app);
}

} // namespace zt
