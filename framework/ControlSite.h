#pragma once

#include "framework/InPlaceFrame.h"
#include "support/ComPtr.h"

#include <windows.h>
#include <ocidl.h>
#include <oleidl.h>

// Lengths of controls are in hundredths of a millimetre.
struct PixelScale {
    LONG perInchX;
    LONG perInchY;
};

constexpr LONG HimetricPerInch = 2540;

// The screen's scale; 96 pixels an inch where it cannot be read.
PixelScale ScreenScale();

// Of a length in pixels, and back. Rounded.
LONG PixelsToHimetric(LONG pixels, LONG pixelsPerInch);
LONG HimetricToPixels(LONG length, LONG pixelsPerInch);

// The container as one control sees it: client site, in-place site, control site and, through
// IDispatch, the ambient properties. It offers no windowless activation, so that every control that
// shows something creates its own window, and does not request property notifications.
//
// Lives on the heap. A control may keep it longer than the container exists: its calls then
// report that the container is destroyed.
class ControlSite final : public IOleClientSite,
                          public IOleInPlaceSiteEx,
                          public IOleControlSite,
                          public IDispatch {
  public:
    // The control is placed in parent, in rect (pixels of its client area).
    ControlSite(HWND parent, const RECT& rect);

    // The control of this site, borrowed until Detach, which also cuts the site off its container.
    void Attach(IUnknown* control) { m_control = control; }
    void Detach();

    // Between the control's in-place activation and its deactivation.
    bool IsActive() const { return m_active; }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
    ULONG STDMETHODCALLTYPE Release() override;

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override;
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override;
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL show) override;
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;

    // IOleWindow
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL enter) override;

    // IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override;
    HRESULT STDMETHODCALLTYPE OnUIActivate() override;
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame,
                                               IOleInPlaceUIWindow** document, RECT* position,
                                               RECT* clip, OLEINPLACEFRAMEINFO* info) override;
    HRESULT STDMETHODCALLTYPE Scroll(SIZE extent) override;
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL undoable) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override;
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override;
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override;
    HRESULT STDMETHODCALLTYPE OnPosRectChange(const RECT* position) override;

    // IOleInPlaceSiteEx
    HRESULT STDMETHODCALLTYPE OnInPlaceActivateEx(BOOL* noRedraw, DWORD flags) override;
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivateEx(BOOL noRedraw) override;
    HRESULT STDMETHODCALLTYPE RequestUIActivate() override;

    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override;
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL lock) override;
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch** control) override;
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL* himetric, POINTF* container,
                                              DWORD flags) override;
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message, DWORD modifiers) override;
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL gotFocus) override;
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override;

    // IDispatch
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD kind,
                                     DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* info,
                                     UINT* wrongArgument) override;

  private:
    ~ControlSite() = default;

    ComPtr<IOleInPlaceObject> InPlaceObject() const;

    ULONG m_references = 1;
    HWND m_parent; // null once the container is destroyed
    RECT m_rect;
    ComPtr<InPlaceFrame> m_frame;
    IUnknown* m_control = nullptr;
    bool m_active = false;
};
