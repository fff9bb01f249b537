#include "publish/ViewerHost.h"

#include "components/Creation.h"
#include "components/Automation.h"
#include "components/contracts/Publishing.h"

namespace zt {

ViewerHost::ViewerHost() : m_control(ViewerControl::ProgId) {}

ComPtr<IDispatch> ViewerHost::Viewer() const {
    const ComPtr<IDispatch> control = Query<IDispatch>(m_control.Get());
    // Without a control the call does nothing and gives null.
    return AutomationObject<ViewerControl>(control).Call<ViewerControl::Viewer>();
}

} // namespace zt
