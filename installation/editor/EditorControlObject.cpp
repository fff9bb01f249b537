#include "installation/editor/EditorControlObject.h"

#include "installation/handlers/OpenProject.h"
#include "installation/runtime/Call.h"
#include "installation/runtime/Ref.h"
#include "installation/runtime/Trace.h"
#include "installation/runtime/Utf8.h"

namespace devinst {

EditorControlObject::EditorControlObject() : WindowedControl(EditorControl::Name) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, EditorControlObject>());
    AddControlFaces();
}

HRESULT EditorControlObject::On(EditorControl::PutKernel, IDispatch* kernel) {
    return TakeKernel(kernel);
}

HRESULT EditorControlObject::On(EditorControl::PutRefKernel, IDispatch* kernel) {
    return TakeKernel(kernel);
}

HRESULT EditorControlObject::TakeKernel(IDispatch* kernel) {
    if (kernel == nullptr)
        return E_INVALIDARG;
    if (!IsInitialised())
        return E_UNEXPECTED;
    TraceWindows();
    m_kernel = kernel;
    m_document.reset();
    try {
        LoadDocument();
    } catch (const ComFailure& failure) {
        TraceLine(Label() + " has loaded no document: " + ToUtf8(failure.description));
    }
    return S_OK;
}

void EditorControlObject::LoadDocument() {
    OpenProject project(m_kernel.Get());
    const std::wstring path = project.DocumentPath();
    if (path.empty())
        return;
    ProjectFacts facts = {project.Metadata(L"Title"), project.Revision()};
    m_document = std::make_shared<EditedDocument>(path, std::move(facts));
}

HRESULT EditorControlObject::On(EditorControl::GetCmdHasDocument, VARIANT_BOOL* hasDocument) {
    *hasDocument = m_document != nullptr ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT EditorControlObject::On(EditorControl::GetCmdSave, VARIANT_BOOL* hasUnsavedChanges) {
    const bool unsaved = m_document != nullptr && m_document->HasUnsavedChanges();
    *hasUnsavedChanges = unsaved ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT EditorControlObject::On(EditorControl::PutCmdSave, VARIANT_BOOL save) {
    if (m_document == nullptr || save != VARIANT_TRUE)
        return E_INVALIDARG;
    m_document->Save();
    return S_OK;
}

HRESULT EditorControlObject::On(EditorControl::GetXMED, IDispatch** editor) {
    *editor = Ref<EditorObject>::Make(m_document).Detach<IDispatch>();
    return S_OK;
}

HRESULT EditorControlObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<EditorControl>(name, id);
}

HRESULT EditorControlObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                            VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<EditorControl>(*this, id, kind, parameters, result, exception);
}

} // namespace devinst
