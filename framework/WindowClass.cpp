#include "framework/WindowClass.h"

#include <cwchar>
#include <iterator>
#include <set>
#include <string>

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
