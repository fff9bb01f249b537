#include "publish/ViewerHost.h"

#include "components/Automation.h"
#include "components/contracts/Publishing.h"
#include "framework/WindowClass.h"

namespace zt {

namespace {

constexpr LONG Side = 16;

} // namespace

ViewerHost::ViewerHost() {
    m_window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, Side, Side, nullptr, nullptr);
    m_control.CreateControl(ViewerControl::ProgId, nullptr, WS_CHILD | WS_VISIBLE,
                            RECT{0, 0, Side, Side}, m_window, 0);
}

ComPtr<IDispatch> ViewerHost::Viewer() const {
    ComPtr<IDispatch> control;
    if (m_control.GetControlUnknown() != nullptr)
        m_control.GetControlUnknown()->QueryInterface(IID_PPV_ARGS(control.GetAddressOf()));
    // Without a control the call does nothing and gives null.
    return AutomationObject<ViewerControl>(control).Call<ViewerControl::Viewer>();
}

} // namespace zt
