#include "framework/InPlaceFrame.h"

HRESULT InPlaceFrame::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    if (iid != IID_IUnknown && iid != IID_IOleWindow && iid != IID_IOleInPlaceUIWindow &&
        iid != IID_IOleInPlaceFrame)
        return E_NOINTERFACE;
    *object = static_cast<IOleInPlaceFrame*>(this);
    AddRef();
    return S_OK;
}

ULONG InPlaceFrame::Release() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT InPlaceFrame::GetWindow(HWND* window) {
    if (window == nullptr)
        return E_INVALIDARG;
    *window = m_window;
    return m_window != nullptr ? S_OK : E_FAIL;
}

HRESULT InPlaceFrame::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

HRESULT InPlaceFrame::GetBorder(RECT*) {
    return INPLACE_E_NOTOOLSPACE;
}

HRESULT InPlaceFrame::RequestBorderSpace(const BORDERWIDTHS*) {
    return INPLACE_E_NOTOOLSPACE;
}

// Null means that the object needs no space.
HRESULT InPlaceFrame::SetBorderSpace(const BORDERWIDTHS* widths) {
    return widths == nullptr ? S_OK : INPLACE_E_NOTOOLSPACE;
}

// No keys are passed on, so that the active object need not be known.
HRESULT InPlaceFrame::SetActiveObject(IOleInPlaceActiveObject*, const wchar_t*) {
    return S_OK;
}

HRESULT InPlaceFrame::InsertMenus(HMENU, OLEMENUGROUPWIDTHS*) {
    return E_NOTIMPL;
}

HRESULT InPlaceFrame::SetMenu(HMENU, HOLEMENU, HWND) {
    return S_OK;
}

HRESULT InPlaceFrame::RemoveMenus(HMENU) {
    return S_OK;
}

HRESULT InPlaceFrame::SetStatusText(const wchar_t*) {
    return S_OK;
}

HRESULT InPlaceFrame::EnableModeless(BOOL) {
    return S_OK;
}

HRESULT InPlaceFrame::TranslateAccelerator(MSG*, WORD) {
    return S_FALSE;
}
