#include "project/OpenStep.h"

#include "app/ZTInvisible.h"
#include "components/Values.h"
#include "framework/WinApp.h"
#include "project/StatusDispSite.h"

namespace zt {

namespace {

constexpr LONG AnyProject = -1;
constexpr LONG LoadAll = 0;

// Ends the project's id in the open path and leads the revision.
constexpr char NewRevisionMark[] = "/new/";

_bstr_t OpenPath(const CZTInvisible& app, const _bstr_t& revision) {
    const _bstr_t mark = MakeText(NewRevisionMark);
    std::wstring path = OrEmpty(app.m_bstrImportedProjectId);
    path += OrEmpty(mark);
    path += OrEmpty(revision);
    return MakeText(path);
}

} // namespace

void OpenProject(CZTInvisible& app, const _bstr_t& revision) {
    const _bstr_t path = OpenPath(app, revision);
    KernelAdmin::OpenProject::Call(app.m_pKernelAdmin.Get(), AnyProject, Borrow(path),
                                   app.m_pKernelProject.ReleaseAndGetAddressOf());
    if (app.m_pKernelProject == nullptr)
        throw L"Can't open project";
}

void LoadSpecificationOfProject(CZTInvisible& app, const PipelineServices& services) {
    KernelProject* const project = app.m_pKernelProject.Get();
    _bstr_t name;
    _bstr_t version;
    KernelProject::GetSpecificationName::Call(project, name.GetAddress());
    KernelProject::GetSpecificationVersion::Call(project, version.GetAddress());
    KernelProject::GetLanguage::Call(project, app.m_bstrLanguage.GetAddress());
    if (name.length() == 0)
        throw L"Project specification is not defined";
    if (!services.loadSpecification(app, OrEmpty(name), version))
        throw L"Can't load specification - aborting...";
    app.Log(L"Specification '%ws', v.%ws loaded\n", OrEmpty(name), OrEmpty(version));
    KernelProject::PutLanguage::Call(project, Borrow(app.m_bstrLanguage));
}

void SelectProduct(CZTInvisible& app) {
    const SpecificationClassFacts& facts = FactsOf(app.m_specificationClass);
    KernelAdmin::SelectProduct::Call(app.m_pKernelAdmin.Get(), facts.productCode);
    app.m_pStatusSite->Product().SetProduct(facts.productName);
}

void LoadProject(CZTInvisible& app, CWaitCursor& waitCursor) {
    ClearErrorInfo();
    const HRESULT loaded = KernelProject::Load::Call(app.m_pKernelProject.Get(), LoadAll);
    waitCursor.Restore();
    if (FAILED(loaded))
        throw CString(L"ERROR loading project: ") + TakeErrorInfo().c_str();
    const ProductInformation& product = app.m_pStatusSite->Product();
    app.Log(L"Project loaded by %s v.%s\n", product.GetVersionString(L"ProductName").c_str(),
            product.GetFileVersion().c_str());
}

} // namespace zt
