// What a control finds at its site, and what is left of it when the container has gone.
#include "support/ComPtr.h"
#include "framework/ControlSite.h"
#include "framework/Wnd.h"
#include "tests/support/TestControl.h"

#include <gmock/gmock.h>

#include <comdef.h>
#include <olectl.h>

using namespace zt::test;

namespace {

class Site : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(m_window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, 200, 100,
                                      nullptr, nullptr));
        m_site = Adopt(new ControlSite(m_window.m_hWnd, {1, 2, 31, 42}));
    }

    HRESULT ReadAmbient(DISPID id, VARIANT* value) {
        DISPPARAMS none = {};
        return m_site->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, value,
                              nullptr, nullptr);
    }

    CWnd m_window;
    ComPtr<ControlSite> m_site;
};

bool SameRect(const RECT& left, const RECT& right) {
    return EqualRect(&left, &right) != FALSE;
}

} // namespace

TEST_F(Site, AnswersTheInterfacesOfAContainerAsOneObject) {
    ComPtr<IUnknown> identity;
    ASSERT_EQ(m_site->QueryInterface(IID_PPV_ARGS(&identity)), S_OK);
    for (const IID& iid : {IID_IOleClientSite, IID_IOleWindow, IID_IOleInPlaceSite,
                           IID_IOleInPlaceSiteEx, IID_IOleControlSite, IID_IDispatch}) {
        ComPtr<IUnknown> face, back;
        ASSERT_EQ(m_site->QueryInterface(iid, reinterpret_cast<void**>(face.GetAddressOf())), S_OK);
        ASSERT_EQ(face.As(&back), S_OK);
        EXPECT_EQ(back.Get(), identity.Get());
    }
}

TEST_F(Site, OffersNoWindowlessActivation) {
    IUnknown* none = reinterpret_cast<IUnknown*>(1);
    EXPECT_EQ(
        m_site->QueryInterface(IID_IOleInPlaceSiteWindowless, reinterpret_cast<void**>(&none)),
        E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
}

TEST_F(Site, TellsItsWindowAndItsFrame) {
    HWND window = nullptr;
    EXPECT_EQ(m_site->GetWindow(&window), S_OK);
    EXPECT_EQ(window, m_window.m_hWnd);
    EXPECT_EQ(m_site->CanInPlaceActivate(), S_OK);

    ComPtr<IOleInPlaceFrame> frame;
    IOleInPlaceUIWindow* document = reinterpret_cast<IOleInPlaceUIWindow*>(1);
    RECT position = {}, clip = {};
    OLEINPLACEFRAMEINFO info = {sizeof(info), TRUE, nullptr, nullptr, 9};
    ASSERT_EQ(m_site->GetWindowContext(&frame, &document, &position, &clip, &info), S_OK);
    EXPECT_EQ(document, nullptr);
    EXPECT_TRUE(SameRect(position, {1, 2, 31, 42}));
    EXPECT_TRUE(SameRect(clip, {1, 2, 31, 42}));
    EXPECT_EQ(info.fMDIApp, FALSE);
    EXPECT_EQ(info.hwndFrame, m_window.m_hWnd);
    EXPECT_EQ(info.haccel, nullptr);
    EXPECT_EQ(info.cAccelEntries, 0u);
    HWND frameWindow = nullptr;
    EXPECT_EQ(frame->GetWindow(&frameWindow), S_OK);
    EXPECT_EQ(frameWindow, m_window.m_hWnd);
}

TEST_F(Site, KnowsWhetherItsControlIsActive) {
    EXPECT_FALSE(m_site->IsActive());
    EXPECT_EQ(m_site->OnInPlaceActivate(), S_OK);
    EXPECT_TRUE(m_site->IsActive());
    EXPECT_EQ(m_site->OnInPlaceDeactivate(), S_OK);
    EXPECT_FALSE(m_site->IsActive());
}

TEST_F(Site, LetsAControlActivateThatAsksWhetherToDraw) {
    BOOL noRedraw = FALSE;
    EXPECT_EQ(m_site->OnInPlaceActivateEx(&noRedraw, 0), S_OK);
    EXPECT_EQ(noRedraw, TRUE);
    EXPECT_TRUE(m_site->IsActive());
    EXPECT_EQ(m_site->RequestUIActivate(), S_FALSE);
    EXPECT_EQ(m_site->OnInPlaceDeactivateEx(TRUE), S_OK);
    EXPECT_FALSE(m_site->IsActive());
}

TEST_F(Site, GivesTheAmbientPropertiesOfAControlAtRunTime) {
    const struct {
        DISPID id;
        _variant_t value;
    } rules[] = {
        {DISPID_AMBIENT_USERMODE, true},
        {DISPID_AMBIENT_UIDEAD, false},
        {DISPID_AMBIENT_MESSAGEREFLECT, false},
        {DISPID_AMBIENT_SHOWGRABHANDLES, false},
        {DISPID_AMBIENT_SHOWHATCHING, false},
        {DISPID_AMBIENT_DISPLAYASDEFAULT, false},
        {DISPID_AMBIENT_SUPPORTSMNEMONICS, false},
        {DISPID_AMBIENT_AUTOCLIP, false},
        {DISPID_AMBIENT_LOCALEID, static_cast<long>(GetUserDefaultLCID())},
        {DISPID_AMBIENT_BACKCOLOR, static_cast<long>(GetSysColor(COLOR_WINDOW))},
        {DISPID_AMBIENT_FORECOLOR, static_cast<long>(GetSysColor(COLOR_WINDOWTEXT))},
    };
    for (const auto& rule : rules) {
        _variant_t value;
        EXPECT_EQ(ReadAmbient(rule.id, &value), S_OK) << rule.id;
        EXPECT_EQ(value.vt, rule.value.vt) << rule.id;
        EXPECT_TRUE(value == rule.value) << rule.id;
    }
}

TEST_F(Site, HasNoAmbientPropertyThatItDoesNotKeep) {
    _variant_t value;
    EXPECT_EQ(ReadAmbient(DISPID_AMBIENT_FONT, &value), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(ReadAmbient(1, &value), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(value.vt, VT_EMPTY);
}

TEST_F(Site, LetsNoControlSetAnAmbientProperty) {
    VARIANTARG flag = {};
    flag.vt = VT_BOOL;
    DISPID name = DISPID_PROPERTYPUT;
    DISPPARAMS one = {&flag, &name, 1, 1};
    EXPECT_EQ(m_site->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, 0, DISPATCH_PROPERTYPUT, &one,
                             nullptr, nullptr, nullptr),
              DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(m_site->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, 0, DISPATCH_PROPERTYGET, &one,
                             nullptr, nullptr, nullptr),
              DISP_E_BADPARAMCOUNT);
    EXPECT_EQ(m_site->Invoke(DISPID_AMBIENT_USERMODE, IID_IUnknown, 0, DISPATCH_PROPERTYGET, &one,
                             nullptr, nullptr, nullptr),
              DISP_E_UNKNOWNINTERFACE);
}

TEST_F(Site, ConvertsBetweenPixelsAndHimetric) {
    POINTL himetric = {2540, 1270};
    POINTF pixels = {};
    EXPECT_EQ(m_site->TransformCoords(&himetric, &pixels,
                                      XFORMCOORDS_SIZE | XFORMCOORDS_HIMETRICTOCONTAINER),
              S_OK);
    EXPECT_EQ(pixels.x, 96.0f);
    EXPECT_EQ(pixels.y, 48.0f);
    himetric = {};
    EXPECT_EQ(m_site->TransformCoords(&himetric, &pixels,
                                      XFORMCOORDS_SIZE | XFORMCOORDS_CONTAINERTOHIMETRIC),
              S_OK);
    EXPECT_EQ(himetric.x, 2540);
    EXPECT_EQ(himetric.y, 1270);
    EXPECT_EQ(m_site->TransformCoords(&himetric, &pixels, XFORMCOORDS_SIZE), E_INVALIDARG);
}

// ---- together with a control ----

namespace {

class SiteOfAControl : public testing::Test {
  protected:
    void SetUp() override {
        AfxEnableControlContainer();
        ControlRecord::Reset();
        ControlTraits traits;
        traits.keepsSite = true;
        const TestControlClass controls(traits);
        ASSERT_TRUE(m_window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, 200, 100,
                                      nullptr, nullptr));
        ASSERT_TRUE(m_control.CreateControl(TestControlClass::IdText(), nullptr, 0x50000000,
                                            {0, 0, 16, 16}, m_window, 0));
        ASSERT_EQ(Record().keptSite.As(&m_inPlaceSite), S_OK);
    }
    void TearDown() override {
        m_control.DestroyWindow();
        m_inPlaceSite.Reset();
        ControlRecord::Reset();
    }

    static ControlRecord& Record() { return ControlRecord::Get(); }

    CWnd m_window;
    CWnd m_control;
    ComPtr<IOleInPlaceSite> m_inPlaceSite;
};

} // namespace

TEST_F(SiteOfAControl, MovesTheControlThatAsksForAnotherPlace) {
    const RECT place = {3, 4, 53, 64};
    EXPECT_EQ(m_inPlaceSite->OnPosRectChange(&place), S_OK);
    EXPECT_EQ(Record().calls.back(), "SetObjectRects");
    EXPECT_TRUE(SameRect(Record().objectRects, place));
    EXPECT_EQ(m_inPlaceSite->OnPosRectChange(nullptr), E_INVALIDARG);
}

TEST_F(SiteOfAControl, DeactivatesTheUserInterfaceOfAControlThatUndoes) {
    EXPECT_EQ(m_inPlaceSite->DeactivateAndUndo(), S_OK);
    EXPECT_EQ(Record().calls.back(), "UIDeactivate");
}

TEST_F(SiteOfAControl, AnswersThatTheContainerIsGoneToWhoeverKeepsIt) {
    m_control.DestroyWindow();
    m_window.DestroyWindow();
    HWND window = m_window.m_hWnd;
    EXPECT_EQ(m_inPlaceSite->GetWindow(&window), E_FAIL);
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(Record().keptFrame->GetWindow(&window), E_FAIL);
    EXPECT_EQ(window, nullptr);
    EXPECT_EQ(m_inPlaceSite->CanInPlaceActivate(), S_FALSE);
    EXPECT_EQ(m_inPlaceSite->OnInPlaceActivate(), E_UNEXPECTED);
    EXPECT_EQ(m_inPlaceSite->OnUIActivate(), E_UNEXPECTED);
    EXPECT_EQ(m_inPlaceSite->DeactivateAndUndo(), E_UNEXPECTED);
    const RECT place = {};
    EXPECT_EQ(m_inPlaceSite->OnPosRectChange(&place), E_UNEXPECTED);
    ComPtr<IOleInPlaceFrame> frame;
    ComPtr<IOleInPlaceUIWindow> document;
    RECT position = {}, clip = {};
    OLEINPLACEFRAMEINFO info = {sizeof(info), FALSE, nullptr, nullptr, 0};
    EXPECT_EQ(m_inPlaceSite->GetWindowContext(&frame, &document, &position, &clip, &info),
              E_UNEXPECTED);
    EXPECT_EQ(frame, nullptr);
}

TEST_F(SiteOfAControl, LivesExactlyAsLongAsItIsHeld) {
    m_control.DestroyWindow();
    EXPECT_EQ(Record().living, 0);
    m_inPlaceSite.Reset();
    EXPECT_EQ(Record().keptFrame.Reset(), 1u); // the site's own
    EXPECT_EQ(Record().keptSite.Reset(), 0u);
}

// ---- windows ----

TEST(WindowClass, IsTheSameHoweverOftenItIsAskedFor) {
    const wchar_t* first = AfxRegisterWndClass(0);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(AfxRegisterWndClass(0), first);
    CWnd window;
    EXPECT_TRUE(window.CreateEx(0, first, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr));
    EXPECT_EQ(AfxRegisterWndClass(0), first);
}

TEST(WindowClass, HasTheLookThatIsAskedFor) {
    WNDCLASSW plain = {}, other = {};
    ASSERT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr), AfxRegisterWndClass(0), &plain));
    EXPECT_EQ(plain.style, 0u);
    EXPECT_EQ(plain.hCursor, nullptr);
    EXPECT_EQ(plain.hbrBackground, nullptr);
    EXPECT_EQ(plain.hIcon, nullptr);
    const HBRUSH brush = GetSysColorBrush(COLOR_WINDOW);
    ASSERT_TRUE(GetClassInfoW(GetModuleHandleW(nullptr),
                              AfxRegisterWndClass(CS_DBLCLKS, nullptr, brush), &other));
    EXPECT_EQ(other.style, static_cast<UINT>(CS_DBLCLKS));
    EXPECT_EQ(other.hbrBackground, brush);
}

TEST(Window, IsMadeAsAskedAndGoesWithItsObject) {
    HWND handle = nullptr;
    {
        CWnd window;
        ASSERT_TRUE(window.CreateEx(0, AfxRegisterWndClass(0), L"", 0x80000000, 0, 0, 16, 16,
                                    nullptr, nullptr));
        handle = window.m_hWnd;
        EXPECT_FALSE(IsWindowVisible(handle));
        EXPECT_EQ(GetWindowTextLengthW(handle), 0);
        EXPECT_EQ(GetMenu(handle), nullptr);
        EXPECT_EQ(GetWindow(handle, GW_OWNER), nullptr);
        RECT rect = {};
        GetWindowRect(handle, &rect);
        EXPECT_TRUE(SameRect(rect, {0, 0, 16, 16}));
    }
    EXPECT_FALSE(IsWindow(handle));
}

TEST(Window, OfAnUnknownClassIsNotMade) {
    CWnd window;
    EXPECT_FALSE(window.CreateEx(0, L"No such class", L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr));
    EXPECT_FALSE(window.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 1, 1, nullptr, nullptr));
    EXPECT_EQ(window.m_hWnd, nullptr);
    EXPECT_FALSE(window.DestroyWindow());
}
