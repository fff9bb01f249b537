// A control for the tests of control hosting: does what its traits say and writes down what is
// asked of it.
#pragma once

#include <windows.h>
#include <ocidl.h>
#include <oleidl.h>
#include <wrl/client.h>

#include <string>
#include <vector>

namespace zt::test {

using Microsoft::WRL::ComPtr;

enum class Activation {
    Windowed,   // makes a child window of the site's window
    Elsewhere,  // makes a window that no container asked for
    Windowless, // activates without a window
    Never,      // answers S_OK and does nothing
    Refused     // answers E_FAIL
};

// How a test control behaves. The result codes are what the named calls answer.
struct ControlTraits {
    DWORD status = 0;
    Activation activation = Activation::Windowed;
    bool isOleObject = true;
    bool givesNullAsOleObject = false;
    bool givesNullAsStreamInit = false;
    bool isRunnable = false;
    bool hasStreamInit = false;
    bool hasStorage = false;
    HRESULT creation = S_OK;
    HRESULT miscStatus = S_OK;
    HRESULT clientSite = S_OK;
    HRESULT initialisation = S_OK;
    // What IDispatch calls go to; null for a control without automation.
    ComPtr<IDispatch> automation;
    // Keeps the site and the frame over the control's own end.
    bool keepsSite = false;
};

// Registers a class of test controls for the calling thread while it lives.
class TestControlClass {
  public:
    // The class identifier that a plain test uses.
    static const CLSID Id;
    static const wchar_t* IdText();

    explicit TestControlClass(ControlTraits traits, REFCLSID id = Id);
    ~TestControlClass();
    TestControlClass(const TestControlClass&) = delete;
    TestControlClass& operator=(const TestControlClass&) = delete;

  private:
    DWORD m_cookie = 0;
};

// A factory for controls of these traits.
ComPtr<IClassFactory> MakeTestControlFactory(ControlTraits traits);

// What was asked of all test controls since the last Reset, and what they keep.
struct ControlRecord {
    std::vector<std::string> calls;
    int living = 0;
    RECT activatedAt = {};
    SIZEL extent = {};
    RECT objectRects = {};
    IOleClientSite* site = nullptr; // borrowed: the site as it was last set
    ComPtr<IOleClientSite> keptSite;
    ComPtr<IOleInPlaceFrame> keptFrame;

    static ControlRecord& Get();
    static void Reset();
};

// Top-level windows of this thread, and their children.
int CountWindows();

} // namespace zt::test
