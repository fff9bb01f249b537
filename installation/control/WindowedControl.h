// Base of the stand-ins that are controls: sited, initialised and activated in place like any
// windowed control. Their automation is their own.
#pragma once

#include "installation/control/ControlContracts.h"
#include "installation/runtime/StandIn.h"

#include <wrl/client.h>

namespace devinst {

class WindowedControl : public StandIn {
  public:
    // The class registers itself with these status bits.
    static constexpr DWORD Status = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_INSIDEOUT |
                                    OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

    HRESULT On(OleObject::SetClientSite, IOleClientSite* site);
    HRESULT On(OleObject::GetClientSite, IOleClientSite** site);
    HRESULT On(OleObject::Close, DWORD save);
    HRESULT On(OleObject::DoVerb, LONG verb, MSG* message, IOleClientSite* site, LONG index,
               HWND parent, const RECT* place);
    HRESULT On(OleObject::SetExtent, DWORD aspect, SIZEL* extent);
    HRESULT On(OleObject::GetExtent, DWORD aspect, SIZEL* extent);
    HRESULT On(OleObject::GetMiscStatus, DWORD aspect, DWORD* status);

    HRESULT On(OleInPlaceObject::GetWindow, HWND* window);
    HRESULT On(OleInPlaceObject::InPlaceDeactivate);
    HRESULT On(OleInPlaceObject::UIDeactivate);
    HRESULT On(OleInPlaceObject::SetObjectRects, const RECT* position, const RECT* clip);

    HRESULT On(PersistStreamInit::IsDirty);
    HRESULT On(PersistStreamInit::InitNew);

  protected:
    explicit WindowedControl(const char* className) : StandIn(className) {}
    ~WindowedControl() override;

    // To be called by the derived class's constructor behind its own AddFace: the first interface
    // is the object's identity.
    void AddControlFaces();

    bool IsInitialised() const { return m_initialised; }
    // Writes what the control's window and its host's look like to the trace.
    void TraceWindows() const;

  private:
    HRESULT Activate(const RECT& place);
    void Deactivate();

    Microsoft::WRL::ComPtr<IOleClientSite> m_site;
    Microsoft::WRL::ComPtr<IOleInPlaceSite> m_inPlaceSite; // while active
    HWND m_window = nullptr;
    SIZEL m_extent = {};
    bool m_initialised = false;
};

} // namespace devinst
