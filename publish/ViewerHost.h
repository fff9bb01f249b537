#pragma once

#include "framework/Wnd.h"

#include <windows.h>
#include <oleauto.h>
#include <wrl/client.h>

namespace zt {

// The viewer control in a hidden window, both for as long as the object lives. What cannot be
// created is left out.
class ViewerHost {
  public:
    ViewerHost();

    // The control's viewer; null without a control. Raises the framework's OLE exception where the
    // control refuses to tell it.
    Microsoft::WRL::ComPtr<IDispatch> Viewer() const;

  private:
    HiddenControl m_control;
};

} // namespace zt
