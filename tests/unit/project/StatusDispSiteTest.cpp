#include "project/StatusDispSite.h"

#include "components/ComponentIds.h"
#include "tests/support/ProjectFixture.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// The site as the kernel sees it: a pointer to a function table.
template <std::size_t Index, typename... Arguments>
HRESULT CallSlot(IUnknown* face, Arguments... arguments) {
    using Function = HRESULT(STDMETHODCALLTYPE*)(void*, Arguments...);
    void** const functions = *reinterpret_cast<void***>(face);
    return reinterpret_cast<Function>(functions[Index])(face, arguments...);
}

class StatusDispSite : public testing::Test {
  protected:
    IOKStatusDisplay* Display() { return site.Get(); }
    IOleClientSite* Client() { return site.Get(); }
    IServiceProvider* Provider() { return site.Get(); }

    RegistryOverride registry{HKEY_LOCAL_MACHINE};
    CallList reported;
    RecordingLog log{reported};
    ComPtr<CStatusDispSite> site = new CStatusDispSite(&log);
};

// ---- identity and lifetime ----

TEST_F(StatusDispSite, AnswersItsFourInterfacesWithTheMatchingFace) {
    const struct {
        const IID& iid;
        void* face;
    } known[] = {
        {IID_IUnknown, Display()},
        {IID_IOKStatusDisplay, Display()},
        {IID_IOleClientSite, Client()},
        {IID_IServiceProvider, Provider()},
    };
    IUnknown* const asked[] = {Display(), Client(), Provider()};
    for (const auto& one : known)
        for (IUnknown* const face : asked) {
            void* object = nullptr;
            EXPECT_EQ(face->QueryInterface(one.iid, &object), S_OK);
            EXPECT_EQ(object, one.face);
            EXPECT_EQ(face->Release(), 1u) << "one reference for each answer";
        }
}

TEST_F(StatusDispSite, AnswersNoOtherInterface) {
    for (const IID& iid : {IID_IOleWindow, IID_IDispatch, IID_IOleInPlaceSite, IID_NULL}) {
        void* object = this;
        EXPECT_EQ(Display()->QueryInterface(iid, &object), static_cast<HRESULT>(0x80004002));
        EXPECT_EQ(object, nullptr);
    }
    EXPECT_EQ(site->AddRef(), 2u);
    site->Release();
}

TEST_F(StatusDispSite, CountsItsReferencesThroughEveryFace) {
    auto* const counted = new CStatusDispSite(nullptr);
    IOleClientSite* const client = counted;
    IServiceProvider* const provider = counted;
    EXPECT_EQ(counted->AddRef(), 1u) << "the count starts at zero";
    EXPECT_EQ(client->AddRef(), 2u);
    EXPECT_EQ(provider->AddRef(), 3u);
    EXPECT_EQ(client->Release(), 2u);
    EXPECT_EQ(provider->Release(), 1u);
    EXPECT_EQ(provider->Release(), 0u);
}

TEST_F(StatusDispSite, SurvivesANullPlaceForTheAnswer) {
    EXPECT_EQ(Display()->QueryInterface(IID_IUnknown, nullptr), E_POINTER);
    EXPECT_EQ(Provider()->QueryService(IID_IOKStatusDisplay, IID_IUnknown, nullptr), E_POINTER);
    EXPECT_TRUE(FAILED(Provider()->QueryService(IID_NULL, IID_IUnknown, nullptr)));
    EXPECT_EQ(Display()->ShowMessage(L"m", 0, nullptr), S_OK);
    EXPECT_EQ(Display()->GetProductVersion(nullptr, nullptr), S_OK);
    EXPECT_EQ(Display()->GetProductName(nullptr), S_OK);
    EXPECT_EQ(Client()->GetMoniker(1, 1, nullptr), E_NOTIMPL);
    EXPECT_EQ(Client()->GetContainer(nullptr), E_NOINTERFACE);
}

// ---- the slots, whatever the kernel passes ----

TEST_F(StatusDispSite, AnswersTheReservedAndTheAcceptedSlotsAsListed) {
    constexpr HRESULT notImplemented = static_cast<HRESULT>(0x80004001);
    int place = 4711;
    EXPECT_EQ((CallSlot<3>(Display(), 1L, &place)), notImplemented);
    EXPECT_EQ((CallSlot<4>(Display(), 1L, &place)), S_OK);
    EXPECT_EQ((CallSlot<5>(Display(), 1L, &place)), S_OK);
    EXPECT_EQ((CallSlot<6>(Display(), L"text", 2L, 3L, &place, &place)), S_OK);
    EXPECT_EQ((CallSlot<8>(Display(), 1L, &place)), notImplemented);
    EXPECT_EQ((CallSlot<9>(Display(), 1L, &place)), notImplemented);
    EXPECT_EQ((CallSlot<10>(Display(), L"text", 2L, 3L, &place, &place)), notImplemented);
    EXPECT_EQ((CallSlot<13>(Display(), 1L, &place)), notImplemented);
    EXPECT_EQ(place, 4711);
    EXPECT_THAT(reported, IsEmpty());
}

TEST_F(StatusDispSite, AnswersItsOwnOperationsInTheirSlots) {
    InstallThisProgram(registry);
    site->Product().SetProduct(FactsOf(SpecificationClass::Ipc));
    LONG answer = 0;
    EXPECT_EQ((CallSlot<7>(Display(), L"Proceed?", 4L, &answer)), S_OK);
    EXPECT_EQ(answer, 6);
    EXPECT_THAT(reported, ElementsAre("LogError(\"Proceed?\")"));
    _bstr_t product;
    _bstr_t file;
    EXPECT_EQ((CallSlot<11>(Display(), product.GetAddress(), file.GetAddress())), S_OK);
    EXPECT_STREQ(product, L"1.4 SR 2");
    EXPECT_STREQ(file, L"1.4.0.12");
    _bstr_t name;
    EXPECT_EQ((CallSlot<12>(Display(), name.GetAddress())), S_OK);
    EXPECT_STREQ(name, L"Zeltor Test Edition");
}

TEST_F(StatusDispSite, AnswersTheClientSitesSlotsAsListed) {
    void* place = this;
    EXPECT_EQ((CallSlot<3>(Client())), S_OK);                                  // SaveObject
    EXPECT_EQ((CallSlot<4>(Client(), DWORD(1), DWORD(2), &place)), E_NOTIMPL); // GetMoniker
    EXPECT_EQ(place, nullptr);
    place = this;
    EXPECT_EQ((CallSlot<5>(Client(), &place)), E_NOINTERFACE); // GetContainer
    EXPECT_EQ(place, nullptr);
    EXPECT_EQ((CallSlot<6>(Client())), S_OK);             // ShowObject
    EXPECT_EQ((CallSlot<7>(Client(), BOOL(TRUE))), S_OK); // OnShowWindow
    EXPECT_EQ((CallSlot<8>(Client())), E_NOTIMPL);        // RequestNewObjectLayout
}

TEST_F(StatusDispSite, ServesItsDisplayInterfaceAndNoOther) {
    void* object = nullptr;
    EXPECT_EQ((CallSlot<3>(Provider(), &IID_IOKStatusDisplay, &IID_IOleClientSite, &object)), S_OK);
    EXPECT_EQ(object, Client());
    EXPECT_EQ(site->Release(), 1u);
    object = this;
    EXPECT_EQ(Provider()->QueryService(IID_IOKStatusDisplay, IID_IOleWindow, &object),
              E_NOINTERFACE);
    EXPECT_EQ(object, nullptr);
    for (const GUID& other : {IID_IOleClientSite, IID_IUnknown, CLSID_KernelAdmin}) {
        object = this;
        EXPECT_EQ(Provider()->QueryService(other, IID_IUnknown, &object), E_NOINTERFACE);
        EXPECT_EQ(object, nullptr);
    }
}

// ---- messages ----

struct Box {
    LONG type;
    LONG answer;

    friend void PrintTo(const Box& one, std::ostream* out) { *out << "type " << one.type; }
};

class StatusDispSiteBox : public StatusDispSite, public testing::WithParamInterface<Box> {};

TEST_P(StatusDispSiteBox, IsAnsweredByItsTypeAlone) {
    for (const LONG further : {0L, 0x10L, 0x40030L, static_cast<LONG>(0xFFFFFFF0)}) {
        LONG answer = -1;
        EXPECT_EQ(Display()->ShowMessage(L"m", GetParam().type | further, &answer), S_OK);
        EXPECT_EQ(answer, GetParam().answer) << "style " << (GetParam().type | further);
    }
}

INSTANTIATE_TEST_SUITE_P(, StatusDispSiteBox,
                         testing::Values(Box{0, 1}, Box{1, 1}, Box{2, 5}, Box{3, 6}, Box{4, 6},
                                         Box{5, 2}, Box{6, 11}, Box{7, 1}, Box{8, 1}, Box{9, 1},
                                         Box{10, 1}, Box{11, 1}, Box{12, 1}, Box{13, 1}, Box{14, 1},
                                         Box{15, 1}),
                         [](const auto& box) { return "Type" + std::to_string(box.param.type); });

TEST_F(StatusDispSite, ReportsEveryMessageAsAnError) {
    LONG answer = 0;
    Display()->ShowMessage(L"The valve is stuck.\n", 0, &answer);
    Display()->ShowMessage(L"100%s done", 0x30, &answer);
    EXPECT_THAT(reported,
                ElementsAre("LogError(\"The valve is stuck.\n\")", "LogError(\"100%s done\")"));
}

TEST_F(StatusDispSite, ReportsAMissingTextAsAnEmptyOne) {
    LONG answer = 0;
    EXPECT_EQ(Display()->ShowMessage(nullptr, 5, &answer), S_OK);
    EXPECT_EQ(answer, 2);
    EXPECT_THAT(reported, ElementsAre("LogError(\"\")"));
}

TEST_F(StatusDispSite, AnswersAlsoWithoutALog) {
    const ComPtr<CStatusDispSite> alone = new CStatusDispSite(nullptr);
    LONG answer = 0;
    EXPECT_EQ(alone->ShowMessage(L"m", 5, &answer), S_OK);
    EXPECT_EQ(answer, 2);
    EXPECT_THAT(reported, IsEmpty());
}

// ---- product ----

TEST_F(StatusDispSite, ReturnsEmptyTextsWithoutAnInstalledProduct) {
    site->Product().SetProduct(FactsOf(SpecificationClass::Ipc));
    _bstr_t product;
    _bstr_t file;
    _bstr_t name;
    EXPECT_EQ(Display()->GetProductVersion(product.GetAddress(), file.GetAddress()), S_OK);
    EXPECT_EQ(Display()->GetProductName(name.GetAddress()), S_OK);
    EXPECT_STREQ(product, L"");
    EXPECT_STREQ(file, L"");
    EXPECT_STREQ(name, L"");
}

TEST_F(StatusDispSite, ReturnsTheOneVersionThatIsAskedFor) {
    InstallThisProgram(registry);
    site->Product().SetProduct(FactsOf(SpecificationClass::Ipc));
    _bstr_t product;
    _bstr_t file;
    EXPECT_EQ(Display()->GetProductVersion(product.GetAddress(), nullptr), S_OK);
    EXPECT_EQ(Display()->GetProductVersion(nullptr, file.GetAddress()), S_OK);
    EXPECT_STREQ(product, L"1.4 SR 2");
    EXPECT_STREQ(file, L"1.4.0.12");
}

} // namespace
} // namespace zt::test
