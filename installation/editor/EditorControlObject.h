#pragma once

#include "installation/control/WindowedControl.h"
#include "installation/editor/EditorContracts.h"
#include "installation/editor/EditorObjects.h"

#include <wrl/client.h>

namespace devinst {

// "KV.XMedCtrl.1": loads the document of the project that is open in the kernel it is given, and
// keeps the kernel for as long as it lives.
class EditorControlObject final : public WindowedControl {
  public:
    EditorControlObject();

    // Loads the project's document. A document that cannot be read is no failure: the control then
    // has none. Fails without a kernel, and before the control is initialised.
    HRESULT On(EditorControl::PutKernel, IDispatch* kernel);
    HRESULT On(EditorControl::PutRefKernel, IDispatch* kernel);
    HRESULT On(EditorControl::GetCmdHasDocument, VARIANT_BOOL* hasDocument);
    HRESULT On(EditorControl::GetCmdSave, VARIANT_BOOL* hasUnsavedChanges);
    HRESULT On(EditorControl::PutCmdSave, VARIANT_BOOL save);
    HRESULT On(EditorControl::GetXMED, IDispatch** editor);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~EditorControlObject() override = default;

    HRESULT TakeKernel(IDispatch* kernel);
    void LoadDocument();

    Microsoft::WRL::ComPtr<IDispatch> m_kernel;
    SharedDocument m_document;
};

} // namespace devinst
