#include "installation/control/ControlWindow.h"

#include "installation/control/ControlContracts.h"
#include "installation/runtime/LiveObjects.h"

#include <bit>
#include <cstdio>
#include <iterator>
#include <map>

namespace devinst {

namespace {

constexpr wchar_t ClassName[] = L"ZTDevelopmentControl";

LRESULT CALLBACK ControlProcedure(HWND window, UINT message, WPARAM word, LPARAM value) {
    if (message == WM_NCCREATE)
        CountLive("ControlWindow", +1);
    if (message == WM_NCDESTROY)
        CountLive("ControlWindow", -1);
    return DefWindowProcW(window, message, word, value);
}

bool RegisterControlClass() {
    WNDCLASSW look = {};
    look.lpfnWndProc = ControlProcedure;
    look.hInstance = GetModuleHandleW(nullptr);
    look.lpszClassName = ClassName;
    return RegisterClassW(&look) != 0 || GetLastError() == ERROR_CLASS_ALREADY_EXISTS;
}

// The procedures that the watched windows had before.
std::map<HWND, WNDPROC>& Watched() {
    static auto* const watched = new std::map<HWND, WNDPROC>;
    return *watched;
}

LRESULT CALLBACK WatchingProcedure(HWND window, UINT message, WPARAM word, LPARAM value) {
    const WNDPROC before = Watched()[window];
    if (message == WM_NCDESTROY) {
        CountLive("HostWindow", -1);
        Watched().erase(window);
    }
    return CallWindowProcW(before, window, message, word, value);
}

std::string Hexadecimal(LONG_PTR bits) {
    char text[16] = {};
    std::snprintf(text, std::size(text), "0x%08lX", static_cast<unsigned long>(bits));
    return text;
}

RECT PlaceInParent(HWND window) {
    RECT place = {};
    GetWindowRect(window, &place);
    if (const HWND parent = GetAncestor(window, GA_PARENT); parent != nullptr)
        MapWindowPoints(nullptr, parent, reinterpret_cast<POINT*>(&place), 2);
    return place;
}

} // namespace

std::string Described(const RECT* rect) {
    if (rect == nullptr)
        return "null";
    return "(" + std::to_string(rect->left) + "," + std::to_string(rect->top) + ")-(" +
           std::to_string(rect->right) + "," + std::to_string(rect->bottom) + ")";
}

HWND MakeControlWindow(HWND host, const RECT& place) {
    if (!RegisterControlClass())
        return nullptr;
    return CreateWindowExW(0, ClassName, L"", WS_CHILD, place.left, place.top,
                           place.right - place.left, place.bottom - place.top, host, nullptr,
                           GetModuleHandleW(nullptr), nullptr);
}

void WatchHostWindow(HWND host) {
    if (Watched().contains(host))
        return;
    CountLive("HostWindow", +1);
    Watched()[host] = std::bit_cast<WNDPROC>(GetWindowLongPtrW(host, GWLP_WNDPROC));
    SetWindowLongPtrW(host, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&WatchingProcedure));
}

std::string DescribedWindow(HWND window) {
    if (window == nullptr)
        return "none";
    wchar_t title[64] = {};
    GetWindowTextW(window, title, static_cast<int>(std::size(title)));
    const RECT place = PlaceInParent(window);
    const LONG_PTR style = GetWindowLongPtrW(window, GWL_STYLE);
    std::string text = "style " + Hexadecimal(style);
    text += ", extended style " + Hexadecimal(GetWindowLongPtrW(window, GWL_EXSTYLE));
    text +=
        ", class style " + Hexadecimal(static_cast<LONG_PTR>(GetClassLongPtrW(window, GCL_STYLE)));
    text += ", " + Described(&place);
    if ((style & WS_CHILD) != 0)
        text += ", id " + std::to_string(GetDlgCtrlID(window));
    text += ", title " + Described(static_cast<const wchar_t*>(title));
    return text + (IsWindowVisible(window) ? ", visible" : ", invisible");
}

} // namespace devinst
