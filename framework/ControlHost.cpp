#include "framework/ControlHost.h"

#include <objbase.h>
#include <ocidl.h>
#include <olectl.h>

#include <utility>

namespace {

HRESULT FindClass(const wchar_t* control, CLSID* classId) {
    if (control == nullptr)
        return E_INVALIDARG;
    return control[0] == L'{' ? CLSIDFromString(control, classId)
                              : CLSIDFromProgID(control, classId);
}

// A storage in memory, for a control that works on one.
HRESULT CreateMemoryStorage(IStorage** storage) {
    ComPtr<ILockBytes> memory;
    const HRESULT made = CreateILockBytesOnHGlobal(nullptr, TRUE, &memory);
    if (FAILED(made))
        return made;
    return StgCreateDocfileOnILockBytes(
        memory.Get(), STGM_CREATE | STGM_READWRITE | STGM_SHARE_EXCLUSIVE, 0, storage);
}

// A control without a state to initialise may answer E_NOTIMPL.
HRESULT AcceptNotImplemented(HRESULT initialised) {
    return initialised == E_NOTIMPL ? S_OK : initialised;
}

} // namespace

ControlHost::ControlHost(ControlPlace place) : m_place(std::move(place)) {
    m_site = Adopt(new ControlSite(m_place.parent, m_place.rect));
}

ControlHost::~ControlHost() {
    if (m_object != nullptr) {
        Deactivate();
        m_object->Close(OLECLOSE_NOSAVE);
        if (m_sited)
            m_object->SetClientSite(nullptr);
    }
    m_site->Detach();
}

HRESULT ControlHost::Create(const wchar_t* control) {
    CLSID classId = {};
    HRESULT result = FindClass(control, &classId);
    if (SUCCEEDED(result))
        result = CoCreateInstance(classId, nullptr, CLSCTX_ALL, IID_PPV_ARGS(&m_control));
    if (SUCCEEDED(result) && m_control == nullptr)
        result = E_POINTER;
    if (SUCCEEDED(result))
        result = m_control.As(&m_object);
    if (SUCCEEDED(result) && m_object == nullptr)
        result = E_NOINTERFACE;
    return SUCCEEDED(result) ? SetUp() : result;
}

HRESULT ControlHost::SetUp() {
    m_site->Attach(m_control.Get());
    DWORD status = 0;
    if (FAILED(m_object->GetMiscStatus(DVASPECT_CONTENT, &status)))
        status = 0;
    const bool siteFirst = (status & OLEMISC_SETCLIENTSITEFIRST) != 0;
    HRESULT result = siteFirst ? SetSite() : Initialise();
    if (SUCCEEDED(result))
        result = siteFirst ? Initialise() : SetSite();
    return result;
}

HRESULT ControlHost::SetSite() {
    // A control that refuses may have kept the site all the same.
    m_sited = true;
    return m_object->SetClientSite(m_site.Get());
}

HRESULT ControlHost::Initialise() {
    ComPtr<IPersistStreamInit> stream;
    if (SUCCEEDED(m_control.As(&stream)) && stream != nullptr)
        return AcceptNotImplemented(stream->InitNew());
    ComPtr<IPersistStorage> storage;
    if (SUCCEEDED(m_control.As(&storage)) && storage != nullptr)
        return InitialiseStorage(storage.Get());
    return S_OK;
}

HRESULT ControlHost::InitialiseStorage(IPersistStorage* persist) {
    const HRESULT made = CreateMemoryStorage(&m_storage);
    return SUCCEEDED(made) ? AcceptNotImplemented(persist->InitNew(m_storage.Get())) : made;
}

HWND ControlHost::Activate() {
    SetContained();
    SetExtent();
    const HRESULT activated = m_object->DoVerb(OLEIVERB_INPLACEACTIVATE, nullptr, m_site.Get(), 0,
                                               m_place.parent, &m_place.rect);
    const HWND window = SUCCEEDED(activated) ? ControlWindow() : nullptr;
    if (window != nullptr)
        SetUpWindow(window);
    return window;
}

// An object that can run on its own must know that it is embedded (the interface's rule). The
// platform's own helper crashes on an object that answers the interface with null.
void ControlHost::SetContained() {
    ComPtr<IRunnableObject> runnable;
    if (SUCCEEDED(m_control.As(&runnable)) && runnable != nullptr)
        runnable->SetContainedObject(TRUE);
}

void ControlHost::SetExtent() {
    const PixelScale scale = ScreenScale();
    SIZEL size = {PixelsToHimetric(m_place.rect.right - m_place.rect.left, scale.perInchX),
                  PixelsToHimetric(m_place.rect.bottom - m_place.rect.top, scale.perInchY)};
    m_object->SetExtent(DVASPECT_CONTENT, &size);
}

void ControlHost::Deactivate() {
    if (!m_site->IsActive())
        return;
    if (const ComPtr<IOleInPlaceObject> inPlace = InPlaceObject(); inPlace != nullptr)
        inPlace->InPlaceDeactivate();
}

ComPtr<IOleInPlaceObject> ControlHost::InPlaceObject() const {
    ComPtr<IOleInPlaceObject> inPlace;
    m_control.As(&inPlace);
    return inPlace;
}

HWND ControlHost::ControlWindow() const {
    if (!m_site->IsActive())
        return nullptr;
    const ComPtr<IOleInPlaceObject> inPlace = InPlaceObject();
    HWND window = nullptr;
    if (inPlace == nullptr || FAILED(inPlace->GetWindow(&window)) || !IsWindow(window))
        return nullptr;
    return window;
}

// The control chooses its window's style and parent; the container's apply from here on.
void ControlHost::SetUpWindow(HWND window) const {
    constexpr DWORD kinds = WS_POPUP | WS_CHILD;
    const DWORD own = static_cast<DWORD>(GetWindowLongPtrW(window, GWL_STYLE)) & ~kinds;
    const DWORD style = own | (m_place.style & ~DWORD{WS_VISIBLE});
    SetWindowLongPtrW(window, GWL_STYLE, static_cast<LONG_PTR>(style));
    if (GetAncestor(window, GA_PARENT) != m_place.parent)
        SetParent(window, m_place.parent);
    SetWindowLongPtrW(window, GWLP_ID, static_cast<LONG_PTR>(m_place.id));
    if (!m_place.title.empty())
        SetWindowTextW(window, m_place.title.c_str());
    const UINT show = (m_place.style & WS_VISIBLE) != 0 ? SWP_SHOWWINDOW : SWP_HIDEWINDOW;
    SetWindowPos(window, nullptr, m_place.rect.left, m_place.rect.top,
                 m_place.rect.right - m_place.rect.left, m_place.rect.bottom - m_place.rect.top,
                 SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED | show);
}
