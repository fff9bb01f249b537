// Hosting of controls: creation and its refusals.
#include "tests/support/HostingFixture.h"

#include <olectl.h>

using namespace zt::test;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

CLSID ClassOf(const wchar_t* progId) {
    CLSID id = {};
    return SUCCEEDED(CLSIDFromProgID(progId, &id)) ? id : CLSID{};
}

} // namespace

// The process hosts no controls until it is told to, and there is no way back: the suite's name has
// GoogleTest run it first.
TEST(HostingNotEnabledDeathTest, CreatesNoControl) {
    ASSERT_FALSE(AfxIsControlContainerEnabled());
    ControlRecord::Reset();
    const TestControlClass controls({});
    CWnd window;
    ASSERT_TRUE(
        window.CreateEx(0, AfxRegisterWndClass(0), L"", WS_POPUP, 0, 0, 16, 16, nullptr, nullptr));
    CWnd control;
    EXPECT_FALSE(
        control.CreateControl(TestControlClass::IdText(), nullptr, ChildVisible, Small, window, 0));
    EXPECT_THAT(Calls(), IsEmpty());
}

TEST_F(Hosting, SitesAControlThatNeedsNoInitialising) {
    ASSERT_TRUE(Create({}));
    EXPECT_THAT(Calls(), ElementsAre("GetMiscStatus", "SetClientSite", "SetExtent", "Activate"));
}

TEST_F(Hosting, TellsAControlThatCanRunElsewhereThatItIsContained) {
    ControlTraits traits;
    traits.isRunnable = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(), ElementsAre("GetMiscStatus", "SetClientSite", "SetContainedObject",
                                     "SetExtent", "Activate"));
}

TEST_F(Hosting, InitialisesThroughAStreamBeforeTheSiteIsSet) {
    ControlTraits traits;
    traits.hasStreamInit = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(),
                ElementsAre("GetMiscStatus", "InitNew", "SetClientSite", "SetExtent", "Activate"));
}

TEST_F(Hosting, SetsTheSiteFirstForAControlThatAsksForIt) {
    ControlTraits traits;
    traits.status = OLEMISC_SETCLIENTSITEFIRST;
    traits.hasStreamInit = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(),
                ElementsAre("GetMiscStatus", "SetClientSite", "InitNew", "SetExtent", "Activate"));
}

TEST_F(Hosting, InitialisesThroughAStorageThatKeepsWhatIsWritten) {
    ControlTraits traits;
    traits.hasStorage = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(), ElementsAre("GetMiscStatus", "InitNew in a storage", "SetClientSite",
                                     "SetExtent", "Activate"));
}

TEST_F(Hosting, InitialisesThroughAStorageWhereTheStreamIsNone) {
    ControlTraits traits;
    traits.givesNullAsStreamInit = true;
    traits.hasStorage = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(), ElementsAre("GetMiscStatus", "InitNew in a storage", "SetClientSite",
                                     "SetExtent", "Activate"));
}

TEST_F(Hosting, PrefersTheStreamWhereAControlHasBoth) {
    ControlTraits traits;
    traits.hasStreamInit = true;
    traits.hasStorage = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(),
                ElementsAre("GetMiscStatus", "InitNew", "SetClientSite", "SetExtent", "Activate"));
}

TEST_F(Hosting, AcceptsAControlWithoutNewStateToMake) {
    ControlTraits traits;
    traits.hasStreamInit = true;
    traits.initialisation = E_NOTIMPL;
    EXPECT_TRUE(Create(traits));
}

TEST_F(Hosting, TakesNoStatusBitsFromAControlThatDoesNotTellThem) {
    ControlTraits traits;
    traits.status = OLEMISC_SETCLIENTSITEFIRST;
    traits.miscStatus = E_NOTIMPL;
    traits.hasStreamInit = true;
    ASSERT_TRUE(Create(traits));
    EXPECT_THAT(Calls(),
                ElementsAre("GetMiscStatus", "InitNew", "SetClientSite", "SetExtent", "Activate"));
}

TEST_F(Hosting, FindsAControlByItsProgId) {
    // The system's font object: no control, but a class that every machine has by name.
    const TestControlClass controls({}, ClassOf(L"StdFont"));
    ASSERT_NE(ClassOf(L"StdFont"), CLSID{});
    EXPECT_TRUE(m_control.CreateControl(L"StdFont", nullptr, ChildVisible, Small, m_window, 0));
    EXPECT_EQ(ControlRecord::Get().living, 1);
}

// ---- refusals ----

namespace {

struct Refusal {
    const char* name;
    ControlTraits traits;
    std::vector<std::string> calls;
};

Refusal CreationRefused() {
    Refusal refusal{"CannotBeCreated", {}, {}};
    refusal.traits.creation = E_OUTOFMEMORY;
    return refusal;
}
Refusal NoControl() {
    Refusal refusal{"IsNoControl", {}, {"gone"}};
    refusal.traits.isOleObject = false;
    return refusal;
}
Refusal NullAsControl() {
    Refusal refusal{"GivesNullAsControl", {}, {"gone"}};
    refusal.traits.givesNullAsOleObject = true;
    return refusal;
}
Refusal SiteRefused() {
    Refusal refusal{
        "RefusesItsSite",
        {},
        {"GetMiscStatus", "InitNew", "SetClientSite", "Close", "ClearClientSite", "gone"}};
    refusal.traits.hasStreamInit = true;
    refusal.traits.clientSite = E_FAIL;
    return refusal;
}
Refusal FirstSiteRefused() {
    Refusal refusal{"RefusesItsSiteWhichItWantsFirst",
                    {},
                    {"GetMiscStatus", "SetClientSite", "Close", "ClearClientSite", "gone"}};
    refusal.traits.hasStreamInit = true;
    refusal.traits.status = OLEMISC_SETCLIENTSITEFIRST;
    refusal.traits.clientSite = E_FAIL;
    return refusal;
}
Refusal StreamRefused() {
    Refusal refusal{"CannotBeInitialised", {}, {"GetMiscStatus", "InitNew", "Close", "gone"}};
    refusal.traits.hasStreamInit = true;
    refusal.traits.initialisation = E_FAIL;
    return refusal;
}
Refusal StreamRefusedBehindSite() {
    Refusal refusal{
        "CannotBeInitialisedBehindItsSite",
        {},
        {"GetMiscStatus", "SetClientSite", "InitNew", "Close", "ClearClientSite", "gone"}};
    refusal.traits.hasStreamInit = true;
    refusal.traits.status = OLEMISC_SETCLIENTSITEFIRST;
    refusal.traits.initialisation = E_FAIL;
    return refusal;
}
Refusal StorageRefused() {
    Refusal refusal{"CannotBeInitialisedInAStorage",
                    {},
                    {"GetMiscStatus", "InitNew in a storage", "Close", "gone"}};
    refusal.traits.hasStorage = true;
    refusal.traits.initialisation = E_FAIL;
    return refusal;
}

void PrintTo(const Refusal& refusal, std::ostream* out) {
    *out << refusal.name;
}

class HostingOfAControlThat : public Hosting, public testing::WithParamInterface<Refusal> {};

} // namespace

TEST_P(HostingOfAControlThat, LeavesNothingBehind) {
    EXPECT_FALSE(Create(GetParam().traits));
    EXPECT_EQ(m_control.m_hWnd, nullptr);
    EXPECT_EQ(m_control.GetControlUnknown(), nullptr);
    EXPECT_EQ(Calls(), GetParam().calls);
    EXPECT_EQ(ControlRecord::Get().living, 0);
}

INSTANTIATE_TEST_SUITE_P(Hosting, HostingOfAControlThat,
                         testing::Values(CreationRefused(), NoControl(), NullAsControl(),
                                         SiteRefused(), FirstSiteRefused(), StreamRefused(),
                                         StreamRefusedBehindSite(), StorageRefused()),
                         [](const auto& info) { return std::string(info.param.name); });

TEST_F(Hosting, RefusesANameThatNoClassHas) {
    for (const wchar_t* name :
         {L"No.Such.Control", L"{no class identifier}", L"",
          L"{00000000-1111-2222-3333-444444444444}", static_cast<const wchar_t*>(nullptr)})
        EXPECT_FALSE(m_control.CreateControl(name, nullptr, ChildVisible, Small, m_window, 0));
}

TEST_F(Hosting, RefusesAParentWithoutAWindow) {
    const TestControlClass controls({});
    const CWnd noWindow;
    EXPECT_FALSE(m_control.CreateControl(TestControlClass::IdText(), nullptr, ChildVisible, Small,
                                         noWindow, 0));
    EXPECT_THAT(Calls(), IsEmpty());
}
