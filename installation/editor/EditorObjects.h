// What stands behind the editor control: the editor, its document and the document's host.
#pragma once

#include "installation/editor/EditedDocument.h"
#include "installation/editor/EditorContracts.h"
#include "installation/runtime/StandIn.h"

#include <memory>

namespace devinst {

// The control and the objects behind it work on one document.
using SharedDocument = std::shared_ptr<EditedDocument>;

class EditorHostObject final : public StandIn {
  public:
    explicit EditorHostObject(SharedDocument document);

    // "OnSaveToCMS" and "cmd_removeChangeMarks"; E_INVALIDARG for any other command.
    HRESULT On(EditorHost::Run, BSTR command);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~EditorHostObject() override = default;

    SharedDocument m_document;
};

class EditorDocumentObject final : public StandIn {
  public:
    explicit EditorDocumentObject(SharedDocument document);

    HRESULT On(EditorDocument::GetHost, IDispatch** host);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~EditorDocumentObject() override = default;

    SharedDocument m_document;
};

class EditorObject final : public StandIn {
  public:
    // document: null when none is loaded; the property "Document" is then null.
    explicit EditorObject(SharedDocument document);

    HRESULT On(Editor::GetDocument, IDispatch** document);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~EditorObject() override = default;

    SharedDocument m_document;
};

} // namespace devinst
