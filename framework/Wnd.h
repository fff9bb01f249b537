// CWnd: a window, or a control hosted in one, with the part of the framework's contract that the
// program uses.
#pragma once

#include "framework/WinApp.h"

#include <windows.h>
#include <unknwn.h>

#include <memory>

class ControlHost;

// Registers a window class of the given look, whose windows do what the system does by default, and
// returns its name, which stays valid until the process ends. The same look gives the same class,
// however often it is requested; the system removes the class with the process. Null when the
// class cannot be registered.
const wchar_t* AfxRegisterWndClass(UINT style, HCURSOR cursor = nullptr,
                                   HBRUSH background = nullptr, HICON icon = nullptr);

// Owns its window and, where it hosts one, its control; both go with it. A control's CWnd must go
// before its parent's CWnd.
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

    // Tears the control down (deactivate, close, clear the site, release), or destroys the window.
    // FALSE when there is neither. Called again, it does nothing.
    BOOL DestroyWindow();

    // The hosted control, borrowed; null when there is none.
    IUnknown* GetControlUnknown() const;

    // Null for a control without a window.
    HWND m_hWnd = nullptr;

  private:
    std::unique_ptr<ControlHost> m_control;
};

// A control, 16 by 16 pixels, in a window that is never shown. Destroys the control before the
// window.
class HiddenControl {
  public:
    // Where the window or the control (as CWnd::CreateControl takes it) cannot be created, there is
    // none.
    explicit HiddenControl(const wchar_t* control);

    // Borrowed; null where there is none.
    IUnknown* Get() const { return m_control.GetControlUnknown(); }

    // Destroys both; the destructor does it otherwise.
    void Destroy();

  private:
    CWnd m_window;
    CWnd m_control;
};
