#include "publish/ViewerHost.h"

#include "components/Automation.h"
#include "components/contracts/Publishing.h"

namespace zt {

ViewerHost::ViewerHost() : m_control(ViewerControl::ProgId) {}

ComPtr<IDispatch> ViewerHost::Viewer() const {
    ComPtr<IDispatch> control;
    if (m_control.Get() != nullptr)
        m_control.Get()->QueryInterface(IID_PPV_ARGS(control.GetAddressOf()));
    // Without a control the call does nothing and gives null.
    return AutomationObject<ViewerControl>(control).Call<ViewerControl::Viewer>();
}

} // namespace zt
