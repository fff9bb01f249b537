#include "project/Opening.h"

#include "components/Values.h"
#include "framework/String.h"
#include "project/Pipeline.h"

#include <string>

namespace zt {

namespace {

constexpr LONG AnyProject = -1;
constexpr LONG LoadAll = 0;

// Ends the project's id in the open path and leads the revision.
constexpr char NewRevisionMark[] = "/new/";

} // namespace

_bstr_t OpenPath(const _bstr_t& projectId, const _bstr_t& revision) {
    const _bstr_t mark = MakeText(NewRevisionMark);
    std::wstring path = OrEmpty(projectId);
    path += OrEmpty(mark);
    path += OrEmpty(revision);
    return MakeText(path);
}

void OpenProject(KernelAdmin* kernel, const _bstr_t& openPath, ComPtr<KernelProject>& project) {
    KernelAdmin::OpenProject::Call(kernel, AnyProject, Borrow(openPath),
                                   project.ReleaseAndGetAddressOf());
    if (project == nullptr)
        throw L"Can't open project";
}

void LoadSpecificationOfProject(KernelProject* project, _bstr_t& language, RunLog& log,
                                PipelineServices& services) {
    _bstr_t name;
    _bstr_t version;
    KernelProject::GetSpecificationName::Call(project, name.GetAddress());
    KernelProject::GetSpecificationVersion::Call(project, version.GetAddress());
    KernelProject::GetLanguage::Call(project, language.GetAddress());
    if (name.length() == 0)
        throw L"Project specification is not defined";
    if (!services.LoadSpecification(OrEmpty(name), version))
        throw L"Can't load specification - aborting...";
    log.Log(L"Specification '%ws', v.%ws loaded\n", OrEmpty(name), OrEmpty(version));
    KernelProject::PutLanguage::Call(project, Borrow(language));
}

void SelectProduct(KernelAdmin* kernel, SpecificationClass specificationClass,
                   ProductInformation& product) {
    const SpecificationClassFacts& facts = FactsOf(specificationClass);
    KernelAdmin::SelectProduct::Call(kernel, facts.productCode);
    product.SetProduct(facts);
}

void LoadOpenProject(KernelProject* project, CWaitCursor& waitCursor) {
    ClearErrorInfo();
    const HRESULT loaded = KernelProject::Load::Call(project, LoadAll);
    waitCursor.Restore();
    if (FAILED(loaded))
        throw CString(L"ERROR loading project: ") + TakeErrorInfo().c_str();
}

} // namespace zt
