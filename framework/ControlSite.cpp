// The client site and the in-place site.
#include "framework/ControlSite.h"

ControlSite::ControlSite(HWND parent, const RECT& rect)
    : m_parent(parent), m_rect(rect), m_frame(Adopt(new InPlaceFrame(parent))) {}

void ControlSite::Detach() {
    m_control = nullptr;
    m_parent = nullptr;
    m_active = false;
    m_frame->Detach();
}

HRESULT ControlSite::QueryInterface(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    if (iid == IID_IUnknown || iid == IID_IOleClientSite)
        *object = static_cast<IOleClientSite*>(this);
    else if (iid == IID_IOleWindow || iid == IID_IOleInPlaceSite || iid == IID_IOleInPlaceSiteEx)
        *object = static_cast<IOleInPlaceSiteEx*>(this);
    else if (iid == IID_IOleControlSite)
        *object = static_cast<IOleControlSite*>(this);
    else if (iid == IID_IDispatch)
        *object = static_cast<IDispatch*>(this);
    else
        *object = nullptr;
    if (*object == nullptr)
        return E_NOINTERFACE;
    AddRef();
    return S_OK;
}

ULONG ControlSite::Release() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

ComPtr<IOleInPlaceObject> ControlSite::InPlaceObject() const {
    ComPtr<IOleInPlaceObject> inPlace;
    if (m_control != nullptr)
        m_control->QueryInterface(IID_PPV_ARGS(&inPlace));
    return inPlace;
}

// ---- client site: the control's state is not saved ----

HRESULT ControlSite::SaveObject() {
    return E_NOTIMPL;
}

HRESULT ControlSite::GetMoniker(DWORD, DWORD, IMoniker** moniker) {
    if (moniker != nullptr)
        *moniker = nullptr;
    return E_NOTIMPL;
}

HRESULT ControlSite::GetContainer(IOleContainer** container) {
    if (container != nullptr)
        *container = nullptr;
    return E_NOINTERFACE;
}

HRESULT ControlSite::ShowObject() {
    return S_OK;
}

HRESULT ControlSite::OnShowWindow(BOOL) {
    return S_OK;
}

HRESULT ControlSite::RequestNewObjectLayout() {
    return E_NOTIMPL;
}

// ---- in-place site ----

HRESULT ControlSite::GetWindow(HWND* window) {
    if (window == nullptr)
        return E_INVALIDARG;
    *window = m_parent;
    return m_parent != nullptr ? S_OK : E_FAIL;
}

HRESULT ControlSite::ContextSensitiveHelp(BOOL) {
    return E_NOTIMPL;
}

HRESULT ControlSite::CanInPlaceActivate() {
    return m_parent != nullptr ? S_OK : S_FALSE;
}

HRESULT ControlSite::OnInPlaceActivate() {
    if (m_parent == nullptr)
        return E_UNEXPECTED;
    m_active = true;
    return S_OK;
}

HRESULT ControlSite::OnUIActivate() {
    return m_parent != nullptr ? S_OK : E_UNEXPECTED;
}

HRESULT ControlSite::GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document,
                                      RECT* position, RECT* clip, OLEINPLACEFRAMEINFO* info) {
    if (frame == nullptr || document == nullptr || position == nullptr || clip == nullptr ||
        info == nullptr)
        return E_INVALIDARG;
    *frame = nullptr;
    *document = nullptr; // the document's window is the frame's
    if (m_parent == nullptr)
        return E_UNEXPECTED;
    *position = m_rect;
    *clip = m_rect;
    info->fMDIApp = FALSE;
    info->hwndFrame = m_parent;
    info->haccel = nullptr;
    info->cAccelEntries = 0;
    return m_frame.CopyTo(frame);
}

HRESULT ControlSite::Scroll(SIZE) {
    return E_NOTIMPL;
}

HRESULT ControlSite::OnUIDeactivate(BOOL) {
    return S_OK;
}

HRESULT ControlSite::OnInPlaceDeactivate() {
    m_active = false;
    return S_OK;
}

HRESULT ControlSite::DiscardUndoState() {
    return S_OK;
}

HRESULT ControlSite::DeactivateAndUndo() {
    const ComPtr<IOleInPlaceObject> inPlace = InPlaceObject();
    return inPlace != nullptr ? inPlace->UIDeactivate() : E_UNEXPECTED;
}

HRESULT ControlSite::OnPosRectChange(const RECT* position) {
    if (position == nullptr)
        return E_INVALIDARG;
    const ComPtr<IOleInPlaceObject> inPlace = InPlaceObject();
    if (inPlace == nullptr)
        return E_UNEXPECTED;
    m_rect = *position;
    return inPlace->SetObjectRects(&m_rect, &m_rect);
}

// Nothing that is drawn here is ever seen, so that nothing need be drawn again.
HRESULT ControlSite::OnInPlaceActivateEx(BOOL* noRedraw, DWORD) {
    if (noRedraw != nullptr)
        *noRedraw = TRUE;
    return OnInPlaceActivate();
}

HRESULT ControlSite::OnInPlaceDeactivateEx(BOOL) {
    return OnInPlaceDeactivate();
}

// No user is there to work with the control.
HRESULT ControlSite::RequestUIActivate() {
    return S_FALSE;
}
