#include "framework/Wnd.h"

#include "framework/ControlHost.h"

#include <cwchar>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace {

// The class names handed out; a set keeps its elements where they are.
std::set<std::wstring> handedOut;

std::wstring NameOf(const WNDCLASSW& look) {
    wchar_t name[96] = {};
    _snwprintf(name, std::size(name) - 1, L"ZTWindow:%x:%p:%p:%p", look.style,
               static_cast<void*>(look.hCursor), static_cast<void*>(look.hbrBackground),
               static_cast<void*>(look.hIcon));
    return name;
}

bool IsRegistered(const WNDCLASSW& look) {
    WNDCLASSW existing = {};
    return GetClassInfoW(look.hInstance, look.lpszClassName, &existing) != FALSE;
}

} // namespace

const wchar_t* AfxRegisterWndClass(UINT style, HCURSOR cursor, HBRUSH background, HICON icon) {
    WNDCLASSW look = {};
    look.style = style;
    look.lpfnWndProc = DefWindowProcW;
    look.hInstance = GetModuleHandleW(nullptr);
    look.hCursor = cursor;
    look.hbrBackground = background;
    look.hIcon = icon;
    const std::wstring name = NameOf(look);
    look.lpszClassName = name.c_str();
    if (!IsRegistered(look) && RegisterClassW(&look) == 0)
        return nullptr;
    return handedOut.insert(name).first->c_str();
}

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

HiddenControl::HiddenControl(const wchar_t* control) {
    constexpr LONG side = 16;
    m_window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, side, side, nullptr, nullptr);
    m_control.CreateControl(control, nullptr, WS_CHILD | WS_VISIBLE, {0, 0, side, side}, m_window,
                            0);
}

void HiddenControl::Destroy() {
    m_control.DestroyWindow();
    m_window.DestroyWindow();
}
