// CWnd: a window, or a control hosted in one, with the part of the framework's contract that the
// program uses.
#pragma once

#include "framework/WinApp.h"

#include <windows.h>
#include <unknwn.h>

#include <memory>

class ControlHost;

// Owns its window and, where it hosts one, its control; both go with it. A control's CWnd must go
// before the CWnd that it stands in.
class CWnd : public CCmdTarget {
  public:
    CWnd();
    ~CWnd() override;

    // Creates the window (size in pixels). FALSE when it cannot be created.
    BOOL CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style, int x,
                  int y, int width, int height, HWND parent, HMENU idOrMenu);

    // Creates the control that control names (a ProgID, or a class identifier in braces), and
    // activates it in place in parent: the control's window, if it makes one, becomes a child of
    // parent with the given title, style, rectangle (in parent's client area) and identifier. A
    // control that does not activate is kept all the same; it then has no window. FALSE when the
    // process does not host controls (AfxEnableControlContainer), when parent has no window, or
    // when the control cannot be created, sited or initialised; nothing of it is then left.
    BOOL CreateControl(const wchar_t* control, const wchar_t* title, DWORD style, const RECT& rect,
                       const CWnd& parent, UINT id);

    // Pulls the control down (deactivate, close, clear the site, release), or destroys the window.
    // FALSE when there is neither. Called again, it does nothing.
    BOOL DestroyWindow();

    // The hosted control, borrowed; null when there is none.
    IUnknown* GetControlUnknown() const;

    // Null for a control without a window.
    HWND m_hWnd = nullptr;

  private:
    std::unique_ptr<ControlHost> m_control;
};
