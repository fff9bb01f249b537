// The operations of the publishing components against tables written out by hand.
#include "components/contracts/Handlers.h"
#include "components/contracts/Publishing.h"

#include "tests/support/RawContract.h"

namespace zt::test {
namespace {

const std::vector<Row> ExporterRows = {
    {"PutDestinationFolder", 10, "BSTR"},
    {"Export", 11, ""},
    {"PutAxesModelPath", 17, "BSTR"},
    {"PutKernel", 35, "KernelAdmin*"},
    {"PutSpecificationFileName", 39, "BSTR"},
    {"PutAxesPosition", 45, "LONG"},
    {"PutOptionA", 46, "LONG"},
    {"PutLanguage", 51, "BSTR"},
    {"PutOptionB", 52, "LONG"},
};

const std::vector<Row> Component3DRows = {
    {"PutViewer", 7, "IDispatch*"},
    {"PutKernel", 8, "KernelAdmin*"},
    {"PutLearningMode", 50, "VARIANT_BOOL"},
    {"PutResourceTag", 53, "BSTR"},
    {"PutAxesFolder", 54, "BSTR"},
    {"PutSpecificationFileName", 61, "BSTR"},
    {"PutOptionC", 64, "LONG"},
    {"PutLanguage", 68, "BSTR"},
    {"PublishView", 79, "BSTR, BSTR, BSTR, LONG, LONG, VARIANT"},
    {"PublishText", 85, "KernelAdmin*, BSTR, BSTR, VARIANT"},
};

const std::vector<Row> CommandTargetRows = {{"Execute", 3, "LONG, const VARIANT*, const VARIANT*"}};

const std::vector<Row> NodeTreeRows = {
    {"GetItem", 7, "VARIANT, IUnknown**"},
    {"GetChildren", 9, "IEnumUnknown**"},
};

const std::vector<Row> ProjectNodeRows = {
    {"GetChildren", 9, "IEnumUnknown**"},
    {"GetAttachedObject", 20, "IUnknown**"},
};

const std::vector<Row> ArchiveRows = {
    {"Create", 7, "BSTR, LONG"},
    {"Close", 8, ""},
    {"AddFile", 9, "BSTR, BSTR, VARIANT_BOOL"},
};

const std::vector<Row> ExportHandlerRows = {
    {"GetFirstName", 8, "KernelProject*, BSTR*"},
    {"GetSecondName", 9, "KernelProject*, BSTR*"},
};

TEST(PublishingContract, CallsEveryMethodOfTheExporterAsListed) {
    ExpectContract<Exporter>(ExporterRows);
}

TEST(PublishingContract, CallsEveryMethodOfThe3DComponentAsListed) {
    ExpectContract<Component3D>(Component3DRows);
    ExpectContract<CommandTarget3D>(CommandTargetRows);
}

TEST(PublishingContract, CallsEveryMethodOfTheNodeTreeAsListed) {
    ExpectContract<NodeTree>(NodeTreeRows);
    ExpectContract<ProjectNode>(ProjectNodeRows);
}

TEST(PublishingContract, CallsEveryMethodOfTheArchiveComponentAsListed) {
    ExpectContract<ArchiveComponent>(ArchiveRows);
}

TEST(PublishingContract, CallsEveryMethodOfTheExportHandlerAsListed) {
    ExpectContract<ExportHandler>(ExportHandlerRows);
}

TEST(PublishingContract, ReadsTheViewerAsAPropertyOfTheControl) {
    EXPECT_EQ(ViewerControl::Viewer::Id, 2);
    EXPECT_EQ(ViewerControl::Viewer::Kind, DISPATCH_PROPERTYGET);
    EXPECT_EQ(ViewerControl::Viewer::Result::Type, VT_DISPATCH);
    EXPECT_EQ(std::tuple_size_v<ViewerControl::Viewer::Arguments>, 0U);
}

TEST(PublishingContract, IsDualButForTheCommandTarget) {
    EXPECT_TRUE((std::is_base_of_v<IDispatch, Exporter>));
    EXPECT_TRUE((std::is_base_of_v<IDispatch, Component3D>));
    EXPECT_TRUE((std::is_base_of_v<IDispatch, NodeTree>));
    EXPECT_TRUE((std::is_base_of_v<IDispatch, ProjectNode>));
    EXPECT_TRUE((std::is_base_of_v<IDispatch, ArchiveComponent>));
    EXPECT_FALSE((std::is_base_of_v<IDispatch, CommandTarget3D>));
}

} // namespace
} // namespace zt::test
