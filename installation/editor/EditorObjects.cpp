#include "installation/editor/EditorObjects.h"

#include "installation/runtime/Ref.h"

#include <string_view>
#include <utility>

namespace devinst {

EditorHostObject::EditorHostObject(SharedDocument document)
    : StandIn(EditorHost::Name), m_document(std::move(document)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, EditorHostObject>());
}

HRESULT EditorHostObject::On(EditorHost::Run, BSTR command) {
    const std::wstring_view name = command != nullptr ? command : L"";
    if (name == L"cmd_removeChangeMarks")
        m_document->RemoveChangeMarks();
    else if (name == L"OnSaveToCMS")
        m_document->StampSave();
    else
        return E_INVALIDARG;
    return S_OK;
}

HRESULT EditorHostObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<EditorHost>(name, id);
}

HRESULT EditorHostObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                         VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<EditorHost>(*this, id, kind, parameters, result, exception);
}

EditorDocumentObject::EditorDocumentObject(SharedDocument document)
    : StandIn(EditorDocument::Name), m_document(std::move(document)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, EditorDocumentObject>());
}

HRESULT EditorDocumentObject::On(EditorDocument::GetHost, IDispatch** host) {
    *host = Ref<EditorHostObject>::Make(m_document).Detach<IDispatch>();
    return S_OK;
}

HRESULT EditorDocumentObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<EditorDocument>(name, id);
}

HRESULT EditorDocumentObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                             VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<EditorDocument>(*this, id, kind, parameters, result, exception);
}

EditorObject::EditorObject(SharedDocument document)
    : StandIn(Editor::Name), m_document(std::move(document)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, EditorObject>());
}

HRESULT EditorObject::On(Editor::GetDocument, IDispatch** document) {
    if (m_document != nullptr)
        *document = Ref<EditorDocumentObject>::Make(m_document).Detach<IDispatch>();
    return S_OK;
}

HRESULT EditorObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<Editor>(name, id);
}

HRESULT EditorObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                                     EXCEPINFO* exception) {
    return InvokeByContract<Editor>(*this, id, kind, parameters, result, exception);
}

} // namespace devinst
