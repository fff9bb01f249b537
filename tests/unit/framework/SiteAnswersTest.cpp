// What the container answers to a control that asks for what it does not offer, or asks wrongly.
#include "support/ComPtr.h"
#include "framework/ControlSite.h"
#include "framework/InPlaceFrame.h"

#include <gmock/gmock.h>

#include <olectl.h>
#include <wrl/client.h>

namespace {

using Microsoft::WRL::ComPtr;

class SiteAnswers : public testing::Test {
  protected:
    const ComPtr<ControlSite> m_site = Adopt(new ControlSite(GetDesktopWindow(), {1, 2, 31, 42}));
};

class FrameAnswers : public testing::Test {
  protected:
    const ComPtr<InPlaceFrame> m_frame = Adopt(new InPlaceFrame(GetDesktopWindow()));
};

// A pointer that an operation must not leave in an out-parameter.
template <typename Interface>
Interface* Stale() {
    return reinterpret_cast<Interface*>(1);
}

} // namespace

TEST_F(SiteAnswers, KeepNoStateOfTheControl) {
    EXPECT_EQ(m_site->SaveObject(), E_NOTIMPL);
    auto* moniker = Stale<IMoniker>();
    EXPECT_EQ(m_site->GetMoniker(OLEGETMONIKER_FORCEASSIGN, OLEWHICHMK_OBJREL, &moniker),
              E_NOTIMPL);
    EXPECT_EQ(moniker, nullptr);
    EXPECT_EQ(m_site->GetMoniker(OLEGETMONIKER_FORCEASSIGN, OLEWHICHMK_OBJREL, nullptr), E_NOTIMPL);
}

TEST_F(SiteAnswers, OfferNoContainerAndNoControlAroundTheControl) {
    auto* container = Stale<IOleContainer>();
    EXPECT_EQ(m_site->GetContainer(&container), E_NOINTERFACE);
    EXPECT_EQ(container, nullptr);
    EXPECT_EQ(m_site->GetContainer(nullptr), E_NOINTERFACE);
    auto* extended = Stale<IDispatch>();
    EXPECT_EQ(m_site->GetExtendedControl(&extended), E_NOTIMPL);
    EXPECT_EQ(extended, nullptr);
    EXPECT_EQ(m_site->GetExtendedControl(nullptr), E_NOTIMPL);
}

TEST_F(SiteAnswers, LetTheControlGoOnWithWhatItOnlyTells) {
    EXPECT_EQ(m_site->ShowObject(), S_OK);
    EXPECT_EQ(m_site->OnShowWindow(TRUE), S_OK);
    EXPECT_EQ(m_site->OnUIDeactivate(FALSE), S_OK);
    EXPECT_EQ(m_site->DiscardUndoState(), S_OK);
    EXPECT_EQ(m_site->OnControlInfoChanged(), S_OK);
    EXPECT_EQ(m_site->LockInPlaceActive(TRUE), S_OK);
    EXPECT_EQ(m_site->OnFocus(TRUE), S_OK);
}

TEST_F(SiteAnswers, RefuseLayoutScrollingHelpKeysAndPropertyPages) {
    EXPECT_EQ(m_site->RequestNewObjectLayout(), E_NOTIMPL);
    EXPECT_EQ(m_site->Scroll({1, 1}), E_NOTIMPL);
    EXPECT_EQ(m_site->ContextSensitiveHelp(TRUE), E_NOTIMPL);
    MSG key = {};
    EXPECT_EQ(m_site->TranslateAccelerator(&key, 0), S_FALSE);
    EXPECT_EQ(m_site->ShowPropertyFrame(), E_NOTIMPL);
}

TEST_F(SiteAnswers, KnowAmbientPropertiesByIdentifierOnly) {
    UINT count = 9;
    EXPECT_EQ(m_site->GetTypeInfoCount(&count), S_OK);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(m_site->GetTypeInfoCount(nullptr), E_POINTER);
    auto* info = Stale<ITypeInfo>();
    EXPECT_EQ(m_site->GetTypeInfo(0, 0, &info), E_NOTIMPL);
    EXPECT_EQ(info, nullptr);
    EXPECT_EQ(m_site->GetTypeInfo(0, 0, nullptr), E_NOTIMPL);
    wchar_t userMode[] = L"UserMode";
    LPOLESTR names[] = {userMode, userMode};
    DISPID ids[] = {DISPID_AMBIENT_USERMODE, DISPID_AMBIENT_USERMODE};
    EXPECT_EQ(m_site->GetIDsOfNames(IID_NULL, names, 2, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(ids[0], DISPID_UNKNOWN);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
    EXPECT_EQ(m_site->GetIDsOfNames(IID_NULL, names, 2, 0, nullptr), DISP_E_UNKNOWNNAME);
    DISPID oneOfTwo[] = {4711, 4711};
    EXPECT_EQ(m_site->GetIDsOfNames(IID_NULL, names, 1, 0, oneOfTwo), DISP_E_UNKNOWNNAME);
    EXPECT_EQ(oneOfTwo[1], 4711);
}

TEST_F(SiteAnswers, RefuseACallWithoutPlaceForTheAnswer) {
    EXPECT_EQ(m_site->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(m_site->GetWindow(nullptr), E_INVALIDARG);
    POINTL himetric = {};
    POINTF pixels = {};
    EXPECT_EQ(m_site->TransformCoords(nullptr, &pixels, XFORMCOORDS_SIZE), E_POINTER);
    EXPECT_EQ(m_site->TransformCoords(&himetric, nullptr, XFORMCOORDS_SIZE), E_POINTER);
}

TEST_F(SiteAnswers, RefuseAWindowContextOfWhichAPartHasNoPlace) {
    IOleInPlaceFrame* frame = nullptr;
    IOleInPlaceUIWindow* document = nullptr;
    RECT position = {}, clip = {};
    OLEINPLACEFRAMEINFO info = {sizeof(info), FALSE, nullptr, nullptr, 0};
    EXPECT_EQ(m_site->GetWindowContext(nullptr, &document, &position, &clip, &info), E_INVALIDARG);
    EXPECT_EQ(m_site->GetWindowContext(&frame, nullptr, &position, &clip, &info), E_INVALIDARG);
    EXPECT_EQ(m_site->GetWindowContext(&frame, &document, nullptr, &clip, &info), E_INVALIDARG);
    EXPECT_EQ(m_site->GetWindowContext(&frame, &document, &position, nullptr, &info), E_INVALIDARG);
    EXPECT_EQ(m_site->GetWindowContext(&frame, &document, &position, &clip, nullptr), E_INVALIDARG);
    EXPECT_EQ(frame, nullptr);
}

TEST_F(SiteAnswers, GiveAnAmbientPropertyToWhoeverAsksWithoutParameters) {
    VARIANT value = {};
    EXPECT_EQ(m_site->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr,
                             &value, nullptr, nullptr),
              S_OK);
    EXPECT_EQ(value.vt, VT_BOOL);
    EXPECT_EQ(value.boolVal, VARIANT_TRUE);
    EXPECT_EQ(m_site->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, 0, DISPATCH_PROPERTYGET, nullptr,
                             nullptr, nullptr, nullptr),
              S_OK);
}

TEST_F(SiteAnswers, ActivateAControlThatDoesNotAskWhetherToDraw) {
    EXPECT_EQ(m_site->OnInPlaceActivateEx(nullptr, 0), S_OK);
    EXPECT_TRUE(m_site->IsActive());
}

TEST_F(SiteAnswers, FailToUndoForAControlWithoutAPlace) {
    EXPECT_EQ(m_site->DeactivateAndUndo(), E_UNEXPECTED);
}

TEST_F(FrameAnswers, KnowTheFrameByItsInterfacesOnly) {
    for (const IID& iid :
         {IID_IUnknown, IID_IOleWindow, IID_IOleInPlaceUIWindow, IID_IOleInPlaceFrame}) {
        ComPtr<IUnknown> face;
        ASSERT_EQ(m_frame->QueryInterface(iid, reinterpret_cast<void**>(face.GetAddressOf())),
                  S_OK);
        EXPECT_EQ(face.Get(), m_frame.Get());
    }
    void* none = Stale<void>();
    EXPECT_EQ(m_frame->QueryInterface(IID_IOleClientSite, &none), E_NOINTERFACE);
    EXPECT_EQ(none, nullptr);
    EXPECT_EQ(m_frame->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(m_frame->GetWindow(nullptr), E_INVALIDARG);
}

TEST_F(FrameAnswers, LeaveTheControlNoSpaceForTools) {
    RECT border = {};
    const BORDERWIDTHS widths = {1, 1, 1, 1};
    EXPECT_EQ(m_frame->GetBorder(&border), INPLACE_E_NOTOOLSPACE);
    EXPECT_EQ(m_frame->RequestBorderSpace(&widths), INPLACE_E_NOTOOLSPACE);
    EXPECT_EQ(m_frame->SetBorderSpace(&widths), INPLACE_E_NOTOOLSPACE);
    EXPECT_EQ(m_frame->SetBorderSpace(nullptr), S_OK);
}

TEST_F(FrameAnswers, HaveNoMenusHelpAndKeys) {
    OLEMENUGROUPWIDTHS widths = {};
    EXPECT_EQ(m_frame->InsertMenus(nullptr, &widths), E_NOTIMPL);
    EXPECT_EQ(m_frame->SetMenu(nullptr, nullptr, nullptr), S_OK);
    EXPECT_EQ(m_frame->RemoveMenus(nullptr), S_OK);
    EXPECT_EQ(m_frame->ContextSensitiveHelp(TRUE), E_NOTIMPL);
    MSG key = {};
    EXPECT_EQ(m_frame->TranslateAccelerator(&key, 0), S_FALSE);
}

TEST_F(FrameAnswers, TakeAnActiveObjectAStatusTextAndADialogWithoutShowingThem) {
    EXPECT_EQ(m_frame->SetActiveObject(nullptr, L"control"), S_OK);
    EXPECT_EQ(m_frame->SetStatusText(L"ready"), S_OK);
    EXPECT_EQ(m_frame->EnableModeless(FALSE), S_OK);
}
