#include "tests/support/PublishFixture.h"

#include <gmock/gmock.h>

namespace zt::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

using ExporterRoute = PublishTest;

TEST_F(ExporterRoute, SetsAndExportsInAFixedOrder) {
    StoreSetting(L"Components\\Exporter", L"high");
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls,
                ElementsAre("create Exporter", "Exporter.SetSite(object)",
                            "KernelAdmin.GetSpecificationFolder()", "Exporter.PutLanguage(\"de\")",
                            "Exporter.PutSpecificationFileName(\"C:\\data\\Pumps.cfg\")",
                            "Exporter.Load(\"high\")", "Exporter.PutAxesModelPath(\"axes1.wrl\")",
                            "Exporter.PutAxesPosition(1310770)", "Exporter.PutKernel(object)",
                            "Exporter.PutDestinationFolder(\"" + PublishedPath() + "\")",
                            "Exporter.PutOptionA(0)", "Exporter.PutOptionB(0)",
                            "Exporter.Export()"));
    EXPECT_THAT(logged, ElementsAre("log: Project published successfully"));
}

TEST_F(ExporterRoute, IsTakenForIllustrationsToo) {
    publication.specificationClass = SpecificationClass::Illus;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, AllOf(Contains("Exporter.Export()"), Not(Contains("create KV3D")),
                             Not(Contains("create the viewer control"))));
}

TEST_F(ExporterRoute, AsksForTheExportersOwnInterface) {
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(exporterClass->Asked(), ElementsAre(IID_Exporter));
}

TEST_F(ExporterRoute, GivesTheClientSiteAsTheSite) {
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(exporterSite.site, &site);
}

TEST_F(ExporterRoute, GivesTheKernelItself) {
    exporter.On<Exporter::PutKernel>([this](KernelAdmin* given) {
        EXPECT_EQ(given, kernel.Get());
        return S_OK;
    });
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains("Exporter.PutKernel(object)"));
}

TEST_F(ExporterRoute, DoesWithoutASiteTakerAndASettingsFace) {
    StoreSetting(L"Components\\Exporter", L"high");
    exporter.Answer(IID_IObjectWithSite, nullptr);
    exporter.Answer(IID_IPersistPropertyBag, nullptr);
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls,
                AllOf(Contains("Exporter.Export()"), Not(Contains("Exporter.SetSite(object)")),
                      Not(Contains("Exporter.Load(\"high\")"))));
}

TEST_F(ExporterRoute, HandsAnEmptyAxesModelPathOver) {
    publication.axesModelPath = _bstr_t();
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains("Exporter.PutAxesModelPath(null)"));
}

TEST_F(ExporterRoute, HandsTheAxesPositionOverUnchanged) {
    publication.axesPosition = 0xFFFF0055;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains("Exporter.PutAxesPosition(-65451)"));
}

TEST_F(ExporterRoute, NamesTheBareExtensionWhereTheKernelNamesNoFolder) {
    kernel.On<KernelAdmin::GetSpecificationFolder>([](BSTR*) { return E_FAIL; });
    EXPECT_EQ(Publish(), L"done");
    EXPECT_THAT(calls, Contains("Exporter.PutSpecificationFileName(\".cfg\")"));
}

TEST_F(ExporterRoute, FailsWithoutAnExporter) {
    exporterClass.reset();
    EXPECT_EQ(Publish(), L"text: Couldn't load IPC Exporter");
    EXPECT_THAT(calls, IsEmpty());
    EXPECT_THAT(logged, testing::IsEmpty());
}

TEST_F(ExporterRoute, FailsWhereTheExporterCannotBeCreated) {
    exporterClass.reset();
    const TestClass refusing(CLSID_Exporter, TestClass::Fails(E_OUTOFMEMORY));
    EXPECT_EQ(Publish(), L"text: Couldn't load IPC Exporter");
}

TEST_F(ExporterRoute, FailsWhereTheCreationGivesNothing) {
    exporterClass.reset();
    const TestClass empty(CLSID_Exporter, TestClass::GivesNothing());
    EXPECT_EQ(Publish(), L"text: Couldn't load IPC Exporter");
}

TEST_F(ExporterRoute, QuotesTheErrorDescriptionOfAFailingExport) {
    exporter.On<Exporter::Export>([] {
        LeaveErrorDescription(L"disk full");
        return E_FAIL;
    });
    EXPECT_EQ(Publish(), L"string: ERROR publishing project: disk full");
    EXPECT_THAT(logged, testing::IsEmpty());
}

TEST_F(ExporterRoute, EndsItsFailureWithABlankWithoutADescription) {
    exporter.Return<Exporter::Export>(E_FAIL);
    EXPECT_EQ(Publish(), L"string: ERROR publishing project: ");
}

TEST_F(ExporterRoute, DoesNotTakeAnEarlierCallsDescriptionForTheExports) {
    AnswerAll(exporter);
    exporter.On<Exporter::PutOptionB>([](LONG) {
        LeaveErrorDescription(L"no option");
        return E_FAIL;
    });
    exporter.Return<Exporter::Export>(E_FAIL);
    EXPECT_EQ(Publish(), L"string: ERROR publishing project: ");
}

TEST_F(ExporterRoute, TakesEverySuccessCodeOfTheExport) {
    exporter.Return<Exporter::Export>(S_FALSE);
    EXPECT_EQ(Publish(), L"done");
}

TEST_F(ExporterRoute, GoesOnPastRefusedSettings) {
    AnswerAll(exporter);
    exporter.Return<Exporter::PutDestinationFolder, Exporter::PutAxesModelPath, Exporter::PutKernel,
                    Exporter::PutSpecificationFileName, Exporter::PutAxesPosition,
                    Exporter::PutOptionA, Exporter::PutLanguage, Exporter::PutOptionB>(E_FAIL);
    exporterSite.result = E_FAIL;
    exporterSettings.result = E_FAIL;
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(calls.back(), "Exporter.Export()");
}

TEST_F(ExporterRoute, ReleasesTheExporterBeforeItReturns) {
    EXPECT_EQ(Publish(), L"done");
    EXPECT_EQ(exporter.References(), 0);
    exporter.Return<Exporter::Export>(E_FAIL);
    EXPECT_NE(Publish(), L"done");
    EXPECT_EQ(exporter.References(), 0);
}

} // namespace
} // namespace zt::test
