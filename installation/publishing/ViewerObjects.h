// "Faldera.Control.1", the viewer as a control, and the viewer behind it.
#pragma once

#include "components/contracts/Publishing.h"
#include "installation/control/WindowedControl.h"
#include "installation/publishing/PublishingContracts.h"
#include "installation/runtime/Ref.h"

namespace devinst {

class ViewerObject final : public StandIn {
  public:
    ViewerObject();

    // Takes a 16-bit integer only.
    HRESULT On(Viewer::PutValidateNodes, const VARIANT& value);
    HRESULT On(Viewer::GetValidateNodes, VARIANT* value);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~ViewerObject() override = default;

    SHORT m_validateNodes = 0;
};

class ViewerControlObject final : public WindowedControl {
  public:
    ViewerControlObject();

    // Fails before the control is initialised.
    HRESULT On(zt::ViewerControl::Viewer, IDispatch** viewer);

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

  private:
    ~ViewerControlObject() override = default;

    Ref<ViewerObject> m_viewer = Ref<ViewerObject>::Make();
};

} // namespace devinst
