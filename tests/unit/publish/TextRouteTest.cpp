#include "tests/support/PublishFixture.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

class TextRoute : public PublishTest {
  protected:
    TextRoute() { publication.specificationClass = SpecificationClass::Text; }
    std::string PublishCall(const std::string& name) const {
        return "KV3D.PublishText(object, \"" + PublishedPath() + "\", \"" + name + "\", 0)";
    }
};

TEST_F(TextRoute, SetsAndPublishesInAFixedOrder) {
    StoreSetting(L"Components\\KV3D", L"high");
    GiveNames(L"One", L"Two");
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, ElementsAre("create KV3D", "KernelAdmin.GetSpecificationFolder()",
                                   "KV3D.PutLanguage(\"de\")",
                                   "KV3D.PutSpecificationFileName(\"C:\\data\\Pumps.cfg\")",
                                   "KV3D.Load(\"high\")", "KV3D.PutOptionC(0)",
                                   "ExportHandler.GetSecondName(object)", PublishCall("Two")));
    EXPECT_THAT(logged, ElementsAre("log: Project published successfully"));
}

TEST_F(TextRoute, NeverCreatesTheViewerControl) {
    EXPECT_EQ(Publish(), L"done");
    EXPECT_TRUE(viewerClass->Asked().empty());
    EXPECT_THAT(componentClass->Asked(), ElementsAre(IID_3DComponent));
}

TEST_F(TextRoute, GivesTheKernelItself) {
    component.On<Component3D::PublishText>(
        [this](KernelAdmin* given, BSTR, BSTR, const VARIANT& last) {
            EXPECT_EQ(given, kernel.Get());
            EXPECT_EQ(last.vt, VT_I4);
            EXPECT_EQ(last.lVal, 0);
            return S_OK;
        });
    EXPECT_EQ(Publish(), L"done");
}

TEST_F(TextRoute, GoesByTheProjectsNameWithoutAHandler) {
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(calls.back(), PublishCall("Pump"));
}

TEST_F(TextRoute, GoesByTheProjectsNameWhereTheHandlerFails) {
    GiveNames(L"One", L"Two");
    exportHandler.Return<ExportHandler::GetSecondName>(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(calls.back(), PublishCall("Pump"));
}

TEST_F(TextRoute, NeverAsksForTheFirstName) {
    GiveNames(L"One", L"");
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Not(Contains("ExportHandler.GetFirstName(object)")));
}

TEST_F(TextRoute, FailsWhereTheComponentIsUnknown) {
    componentClass.reset();
    EXPECT_EQ(Publish(), L"text: Can't create KV3D");
    EXPECT_THAT(calls, IsEmpty());
}

TEST_F(TextRoute, FailsWhereTheComponentCannotBeCreated) {
    componentClass = std::make_unique<TestClass>(L"KV.3D.1", TestClass::Fails(E_FAIL));
    EXPECT_EQ(Publish(), L"text: Can't create KV3D");
    componentClass = std::make_unique<TestClass>(L"KV.3D.1", TestClass::GivesNothing());
    EXPECT_EQ(Publish(), L"text: Can't create KV3D");
}

TEST_F(TextRoute, FailsWithAFixedTextWhereThePublicationFails) {
    component.On<Component3D::PublishText>([](auto...) {
        LeaveErrorDescription(L"disk full");
        return E_FAIL;
    });
    EXPECT_EQ(Publish(), L"text: Error publishing project");
    EXPECT_THAT(logged, testing::IsEmpty());
    EXPECT_EQ(component.References(), 0);
}

TEST_F(TextRoute, GoesOnPastRefusedSettings) {
    component.Return<Component3D::PutLanguage, Component3D::PutSpecificationFileName,
                     Component3D::PutOptionC>(E_FAIL);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(calls.back(), PublishCall("Pump"));
}

} // namespace
} // namespace zt::test
