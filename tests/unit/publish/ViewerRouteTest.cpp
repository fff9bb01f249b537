#include "components/ComponentIds.h"
#include "tests/support/PublishFixture.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::StartsWith;

class ViewerRoute : public PublishTest {
  protected:
    ViewerRoute() {
        publication.specificationClass = SpecificationClass::Proc;
        component.Answer(IID_3DCommandTarget, nullptr);
    }
    std::string PublishCall(const std::string& first, const std::string& second) const {
        return "KV3D.PublishView(\"" + PublishedPath() + "\", \"" + first + "\", \"" + second +
               "\", 1, 0, 0)";
    }
    CallList CallsBeginningWith(const std::string& text) const {
        CallList found;
        for (const std::string& call : calls)
            if (call.rfind(text, 0) == 0)
                found.push_back(call);
        return found;
    }
};

TEST_F(ViewerRoute, SetsAndPublishesInAFixedOrder) {
    StoreSetting(L"Components\\KV3D", L"high");
    GiveNames(L"One", L"Two");
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls,
                ElementsAre("create the viewer control", "ViewerControl.Viewer()", "create KV3D",
                            "KV3D.PutKernel(object)", "KV3D.PutViewer(object)",
                            "KV3D.PutResourceTag(\"#res#\")", "KV3D.PutLearningMode(0)",
                            "KernelAdmin.GetSpecificationFolder()", "KV3D.PutLanguage(\"de\")",
                            "KV3D.PutSpecificationFileName(\"C:\\data\\Pumps.cfg\")",
                            "KV3D.Load(\"high\")",
                            "KV3D.PutAxesFolder(\"C:\\common\\KVProductFamily\\Axes\\axes1.wrl\")",
                            "KV3D.PutOptionC(0)", "ExportHandler.GetFirstName(object)",
                            "ExportHandler.GetSecondName(object)", PublishCall("One", "Two"),
                            "KV3D.PutViewer(null)"));
    EXPECT_THAT(logged, ElementsAre("log: Project published successfully"));
}

TEST_F(ViewerRoute, IsTakenForTrainingTooWhichIsPublishedForLearning) {
    publication.specificationClass = SpecificationClass::Trng;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls,
                AllOf(Contains("create the viewer control"), Contains("KV3D.PutLearningMode(-1)"),
                      Contains(PublishCall("Pump", "Pump"))));
}

TEST_F(ViewerRoute, GivesKernelAndViewerThemselves) {
    component.On<Component3D::PutKernel>([this](KernelAdmin* given) {
        EXPECT_EQ(given, kernel.Get());
        return S_OK;
    });
    int puts = 0;
    component.On<Component3D::PutViewer>([this, &puts](IDispatch* given) {
        EXPECT_EQ(given, ++puts == 1 ? &viewer : nullptr);
        return S_OK;
    });
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(puts, 2);
}

TEST_F(ViewerRoute, HasNodesValidatedByA16BitInteger) {
    EXPECT_EQ(Publish(), L"done");
    ASSERT_THAT(viewer.lookups, ElementsAre(L"ValidateNodes"));
    ASSERT_EQ(viewer.invocations.size(), 1U);
    const Invocation& put = viewer.invocations[0];
    EXPECT_EQ(put.id, 77);
    EXPECT_EQ(put.kind, DISPATCH_PROPERTYPUT);
    EXPECT_EQ(put.locale, 0x400U);
    EXPECT_THAT(put.named, ElementsAre(DISPID_PROPERTYPUT));
    ASSERT_EQ(put.arguments.size(), 1U);
    EXPECT_EQ(put.arguments[0].vt, VT_I2);
    EXPECT_EQ(put.arguments[0].iVal, -1);
}

TEST_F(ViewerRoute, UsesAViewerThatValidatesNoNodes) {
    viewer.names.clear();
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(viewer.invocations, IsEmpty());
}

TEST_F(ViewerRoute, UsesAViewerThatRefusesToValidateNodes) {
    viewer.answer = Succeed(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
}

TEST_F(ViewerRoute, SkipsTheAxesFolderWithoutAnAxesModel) {
    for (const _bstr_t& none : {_bstr_t(), _bstr_t(L"")}) {
        publication.axesModelPath = none;
        calls.clear();
        EXPECT_EQ(Publish(), L"done");
        EXPECT_THAT(CallsBeginningWith("KV3D.PutAxesFolder"), IsEmpty());
    }
}

// ---- names ----

TEST_F(ViewerRoute, FallsBackFromTheSecondNameToTheFirstToTheProject) {
    GiveNames(L"One", nullptr);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains(PublishCall("One", "One")));
    GiveNames(nullptr, L"");
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains(PublishCall("Pump", "Pump")));
}

TEST_F(ViewerRoute, GoesByTheProjectsNameWithoutAHandler) {
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains(PublishCall("Pump", "Pump")));
}

// ---- the viewer control ----

TEST_F(ViewerRoute, GoesOnWithoutAViewerControl) {
    viewerClass.reset();
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(CallsBeginningWith("KV3D.PutViewer"),
                ElementsAre("KV3D.PutViewer(null)", "KV3D.PutViewer(null)"));
    EXPECT_THAT(viewer.lookups, IsEmpty());
}

TEST_F(ViewerRoute, GoesOnWhereTheViewerControlCannotBeCreated) {
    viewerClass = std::make_unique<TestClass>(L"Faldera.Control.1", TestClass::Fails(E_FAIL));
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains("KV3D.PutViewer(null)"));
}

TEST_F(ViewerRoute, GoesOnWhereTheControlHasNoViewer) {
    viewerControl.On<ViewerControl::Viewer>(Succeed());
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(CallsBeginningWith("KV3D.PutViewer"),
                ElementsAre("KV3D.PutViewer(null)", "KV3D.PutViewer(null)"));
}

TEST_F(ViewerRoute, RaisesWhatAControlSaysThatRefusesItsViewer) {
    viewerControl.On<ViewerControl::Viewer>(Raise(L"no licence"));
    EXPECT_EQ(Publish(), L"OLE: no licence");
}

constexpr RECT WholeWindow = {0, 0, 16, 16};

// The windows of this thread that have a child.
std::vector<HWND> HostWindows() {
    std::vector<HWND> windows;
    EnumThreadWindows(
        GetCurrentThreadId(),
        [](HWND window, LPARAM list) -> BOOL {
            if (GetWindow(window, GW_CHILD) != nullptr)
                reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
            return TRUE;
        },
        reinterpret_cast<LPARAM>(&windows));
    return windows;
}

TEST_F(ViewerRoute, HostsTheControlInAHiddenPopUpOf16By16Pixels) {
    component.On<Component3D::PublishView>([](auto...) {
        const std::vector<HWND> hosts = HostWindows();
        EXPECT_EQ(hosts.size(), 1U);
        RECT place = {};
        GetWindowRect(hosts.at(0), &place);
        EXPECT_TRUE(EqualRect(&place, &WholeWindow));
        const LONG_PTR style = GetWindowLongPtrW(hosts[0], GWL_STYLE);
        EXPECT_EQ(style & (WS_POPUP | WS_VISIBLE | WS_CAPTION), static_cast<LONG_PTR>(WS_POPUP));
        EXPECT_EQ(GetWindowTextLengthW(hosts[0]), 0);
        return S_OK;
    });
    EXPECT_EQ(Publish(), L"done");
    EXPECT_TRUE(HostWindows().empty());
}

TEST_F(ViewerRoute, HostsTheControlInAWindowOfAPlainClass) {
    component.On<Component3D::PublishView>([](auto...) {
        const HWND host = HostWindows().at(0);
        EXPECT_EQ(GetClassLongPtrW(host, GCL_STYLE), 0U);
        EXPECT_EQ(GetClassLongPtrW(host, GCLP_HCURSOR), 0U);
        EXPECT_EQ(GetClassLongPtrW(host, GCLP_HBRBACKGROUND), 0U);
        EXPECT_EQ(GetClassLongPtrW(host, GCLP_HICON), 0U);
        return S_OK;
    });
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains(StartsWith("KV3D.PublishView(")));
}

TEST_F(ViewerRoute, GivesTheControlTheWholeWindow) {
    EXPECT_EQ(Publish(), L"done");
    const RECT& place = ControlRecord::Get().activatedAt;
    EXPECT_TRUE(EqualRect(&place, &WholeWindow));
}

// ---- failures ----

TEST_F(ViewerRoute, FailsWhereTheComponentCannotBeCreated) {
    componentClass.reset();
    EXPECT_EQ(Publish(), L"text: Can't create KV3D");
    EXPECT_THAT(calls, ElementsAre("create the viewer control", "ViewerControl.Viewer()"));
    componentClass = std::make_unique<TestClass>(L"KV.3D.1", TestClass::Fails(E_FAIL));
    EXPECT_EQ(Publish(), L"text: Can't create KV3D");
}

TEST_F(ViewerRoute, QuotesTheErrorDescriptionOfAFailingPublication) {
    component.On<Component3D::PublishView>([](auto...) {
        LeaveErrorDescription(L"disk full");
        return E_FAIL;
    });
    EXPECT_EQ(Publish(), L"string: Error publishing project:\ndisk full");
    EXPECT_THAT(logged, testing::IsEmpty());
}

TEST_F(ViewerRoute, FailsWithTheBareTextWithoutADescription) {
    component.Return<Component3D::PublishView>(E_FAIL);
    EXPECT_EQ(Publish(), L"string: Error publishing project");
}

TEST_F(ViewerRoute, DoesNotTakeAnEarlierCallsDescriptionForThePublications) {
    component.On<Component3D::PutOptionC>([](LONG) {
        LeaveErrorDescription(L"no option");
        return E_FAIL;
    });
    component.Return<Component3D::PublishView>(E_FAIL);
    EXPECT_EQ(Publish(), L"string: Error publishing project");
}

TEST_F(ViewerRoute, DoesNotClearTheViewerAfterAFailure) {
    const LONG viewerBefore = viewer.References();
    component.Return<Component3D::PublishView>(E_FAIL);
    EXPECT_NE(Publish(), L"done");
    EXPECT_THAT(CallsBeginningWith("KV3D.PutViewer"), ElementsAre("KV3D.PutViewer(object)"));
    EXPECT_EQ(component.References(), 0);
    EXPECT_EQ(viewer.References(), viewerBefore);
    EXPECT_EQ(viewerControl.References(), 0);
}

TEST_F(ViewerRoute, GoesOnPastRefusedSettings) {
    component.Return<Component3D::PutKernel, Component3D::PutViewer, Component3D::PutResourceTag,
                     Component3D::PutLearningMode, Component3D::PutLanguage,
                     Component3D::PutSpecificationFileName, Component3D::PutAxesFolder,
                     Component3D::PutOptionC>(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains(StartsWith("KV3D.PublishView(")));
}

} // namespace
} // namespace zt::test
