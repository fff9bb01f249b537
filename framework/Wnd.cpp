#include "framework/Wnd.h"

#include "framework/ControlHost.h"

#include <utility>

CWnd::CWnd() = default;

CWnd::~CWnd() {
    DestroyWindow();
}

BOOL CWnd::CreateEx(DWORD exStyle, const wchar_t* className, const wchar_t* title, DWORD style,
                    int x, int y, int width, int height, HWND parent, HMENU idOrMenu) {
    DestroyWindow();
    if (className == nullptr)
        return FALSE;
    m_hWnd = CreateWindowExW(exStyle, className, title, style, x, y, width, height, parent,
                             idOrMenu, GetModuleHandleW(nullptr), nullptr);
    return m_hWnd != nullptr;
}

BOOL CWnd::CreateControl(const wchar_t* control, const wchar_t* title, DWORD style,
                         const RECT& rect, const CWnd& parent, UINT id) {
    DestroyWindow();
    if (!AfxIsControlContainerEnabled() || parent.m_hWnd == nullptr)
        return FALSE;
    auto host = std::make_unique<ControlHost>(
        ControlPlace{parent.m_hWnd, title != nullptr ? title : L"", style, rect, id});
    if (FAILED(host->Create(control)))
        return FALSE;
    m_hWnd = host->Activate();
    m_control = std::move(host);
    return TRUE;
}

BOOL CWnd::DestroyWindow() {
    const HWND window = std::exchange(m_hWnd, nullptr);
    if (m_control != nullptr) {
        m_control.reset();
        return TRUE;
    }
    return window != nullptr && ::DestroyWindow(window);
}

IUnknown* CWnd::GetControlUnknown() const {
    return m_control != nullptr ? m_control->Control() : nullptr;
}
