// One hosted control, from its creation to its end.
#pragma once

#include "framework/ControlSite.h"
#include "support/ComPtr.h"

#include <windows.h>
#include <oleidl.h>

#include <string>

// Position and look of a control's window.
struct ControlPlace {
    HWND parent;
    std::wstring title; // empty: the control's own
    DWORD style;
    RECT rect; // in pixels of parent's client area
    UINT id;
};

class ControlHost {
  public:
    explicit ControlHost(ControlPlace place);
    // Tears the control down: deactivates it, closes it without saving, clears its site and
    // releases it, each where it was done before.
    ~ControlHost();
    ControlHost(const ControlHost&) = delete;
    ControlHost& operator=(const ControlHost&) = delete;

    // Creates the control, sets its site and initialises it, in the order that the control's status
    // bits require. Returns the first failing result code.
    HRESULT Create(const wchar_t* control);

    // Activates the control in place. Returns its window, set up as the place says; null for a
    // control that does not activate or has no window.
    HWND Activate();

    // Borrowed; null before the creation.
    IUnknown* Control() const { return m_control.Get(); }

  private:
    HRESULT SetUp();
    HRESULT SetSite();
    HRESULT Initialise();
    HRESULT InitialiseStorage(IPersistStorage* persist);
    void SetContained();
    void SetExtent();
    void Deactivate();
    ComPtr<IOleInPlaceObject> InPlaceObject() const;
    HWND ControlWindow() const;
    void SetUpWindow(HWND window) const;

    ControlPlace m_place;
    ComPtr<ControlSite> m_site;
    // What a control that keeps its state in a storage works on; must outlive the control.
    ComPtr<IStorage> m_storage;
    ComPtr<IUnknown> m_control;
    ComPtr<IOleObject> m_object;
    bool m_sited = false;
};
