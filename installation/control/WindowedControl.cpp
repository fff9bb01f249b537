#include "installation/control/WindowedControl.h"

#include "installation/control/ControlWindow.h"
#include "installation/runtime/Call.h"
#include "installation/runtime/Trace.h"

#include <utility>

namespace devinst {

using Microsoft::WRL::ComPtr;

WindowedControl::~WindowedControl() {
    Deactivate();
}

void WindowedControl::AddControlFaces() {
    AddFace(IID_IOleObject, FunctionTable<OleObject, WindowedControl>());
    AddFace(IID_IOleInPlaceObject, FunctionTable<OleInPlaceObject, WindowedControl>());
    AddFace(IID_IPersistStreamInit, FunctionTable<PersistStreamInit, WindowedControl>());
}

// ---- object ----

HRESULT WindowedControl::On(OleObject::SetClientSite, IOleClientSite* site) {
    m_site = site;
    return S_OK;
}

HRESULT WindowedControl::On(OleObject::GetClientSite, IOleClientSite** site) {
    return m_site.CopyTo(site);
}

HRESULT WindowedControl::On(OleObject::Close, DWORD) {
    Deactivate();
    return S_OK;
}

HRESULT WindowedControl::On(OleObject::DoVerb, LONG verb, MSG*, IOleClientSite*, LONG, HWND,
                            const RECT* place) {
    if (verb != OLEIVERB_INPLACEACTIVATE && verb != OLEIVERB_UIACTIVATE && verb != OLEIVERB_SHOW)
        return OLEOBJ_S_INVALIDVERB;
    if (place == nullptr)
        return E_INVALIDARG;
    return m_window != nullptr ? S_OK : Activate(*place);
}

HRESULT WindowedControl::On(OleObject::SetExtent, DWORD aspect, SIZEL* extent) {
    if (aspect != DVASPECT_CONTENT || extent == nullptr)
        return E_INVALIDARG;
    m_extent = *extent;
    return S_OK;
}

HRESULT WindowedControl::On(OleObject::GetExtent, DWORD aspect, SIZEL* extent) {
    if (aspect != DVASPECT_CONTENT || extent == nullptr)
        return E_INVALIDARG;
    *extent = m_extent;
    return S_OK;
}

HRESULT WindowedControl::On(OleObject::GetMiscStatus, DWORD aspect, DWORD* status) {
    *status = aspect == DVASPECT_CONTENT ? Status : 0;
    return S_OK;
}

HRESULT WindowedControl::Activate(const RECT& place) {
    ComPtr<IOleInPlaceSite> site;
    if (m_site == nullptr || FAILED(m_site->QueryInterface(IID_PPV_ARGS(&site))))
        return E_UNEXPECTED;
    const HRESULT allowed = site->CanInPlaceActivate();
    TraceCallback("CanInPlaceActivate", {}, allowed);
    if (allowed != S_OK)
        return E_FAIL;
    HWND host = nullptr;
    const HRESULT hosted = site->GetWindow(&host);
    TraceCallback("GetWindow", {}, hosted, {DescribedWindow(host)});
    if (FAILED(hosted))
        return hosted;
    const HRESULT activated = site->OnInPlaceActivate();
    TraceCallback("OnInPlaceActivate", {}, activated);
    if (FAILED(activated))
        return activated;
    m_inPlaceSite = site;
    WatchHostWindow(host);
    m_window = MakeControlWindow(host, place);
    if (m_window == nullptr)
        Deactivate();
    return m_window != nullptr ? S_OK : E_FAIL;
}

void WindowedControl::Deactivate() {
    if (const HWND window = std::exchange(m_window, nullptr); IsWindow(window))
        DestroyWindow(window);
    // The site may let go of the control while it is told.
    const ComPtr<IOleInPlaceSite> site = m_inPlaceSite;
    m_inPlaceSite.Reset();
    if (site != nullptr)
        TraceCallback("OnInPlaceDeactivate", {}, site->OnInPlaceDeactivate());
}

void WindowedControl::TraceWindows() const {
    TraceLine("window of " + Label() + ": " + DescribedWindow(m_window));
}

// ---- in-place object ----

HRESULT WindowedControl::On(OleInPlaceObject::GetWindow, HWND* window) {
    *window = m_window;
    return m_window != nullptr ? S_OK : E_FAIL;
}

HRESULT WindowedControl::On(OleInPlaceObject::InPlaceDeactivate) {
    Deactivate();
    return S_OK;
}

HRESULT WindowedControl::On(OleInPlaceObject::UIDeactivate) {
    return S_OK;
}

HRESULT WindowedControl::On(OleInPlaceObject::SetObjectRects, const RECT* position, const RECT*) {
    if (position == nullptr)
        return E_INVALIDARG;
    MoveWindow(m_window, position->left, position->top, position->right - position->left,
               position->bottom - position->top, FALSE);
    return S_OK;
}

// ---- initialisation ----

HRESULT WindowedControl::On(PersistStreamInit::IsDirty) {
    return S_FALSE;
}

// The control takes its host's settings over, so that it has to know its site by now.
HRESULT WindowedControl::On(PersistStreamInit::InitNew) {
    if (m_site == nullptr || m_initialised)
        return E_UNEXPECTED;
    m_initialised = true;
    return S_OK;
}

} // namespace devinst
