// The operations of the publishing components against a table written out by hand.
#include "components/contracts/Handlers.h"
#include "components/contracts/Publishing.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zt::test {
namespace {

struct Row {
    const char* operation;
    std::size_t index;
    const char* arguments;
};

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

template <typename Type>
constexpr const char* NameOf = nullptr;
template <>
constexpr const char* NameOf<BSTR> = "BSTR";
template <>
constexpr const char* NameOf<BSTR*> = "BSTR*";
template <>
constexpr const char* NameOf<LONG> = "LONG";
template <>
constexpr const char* NameOf<VARIANT_BOOL> = "VARIANT_BOOL";
template <>
constexpr const char* NameOf<VARIANT> = "VARIANT";
template <>
constexpr const char* NameOf<const VARIANT*> = "const VARIANT*";
template <>
constexpr const char* NameOf<KernelAdmin*> = "KernelAdmin*";
template <>
constexpr const char* NameOf<KernelProject*> = "KernelProject*";
template <>
constexpr const char* NameOf<IDispatch*> = "IDispatch*";
template <>
constexpr const char* NameOf<IUnknown**> = "IUnknown**";
template <>
constexpr const char* NameOf<IEnumUnknown**> = "IEnumUnknown**";

template <typename... Types>
std::string ShowTypes(std::tuple<Types...>*) {
    std::string list;
    ((list += (list.empty() ? "" : ", ") + std::string(NameOf<Types>)), ...);
    return list;
}

template <typename Operation>
std::string Show() {
    return std::string(Operation::Name) + " " + std::to_string(Operation::Index) + " (" +
           ShowTypes(static_cast<typename Operation::Arguments*>(nullptr)) + ")";
}

template <typename... Operation>
std::vector<std::string> ShowAll(std::tuple<Operation...>*) {
    return {Show<Operation>()...};
}

template <typename Contract>
void ExpectContract(const std::vector<Row>& rows) {
    std::vector<std::string> wanted;
    for (const Row& row : rows)
        wanted.push_back(std::string(row.operation) + " " + std::to_string(row.index) + " (" +
                         row.arguments + ")");
    EXPECT_EQ(ShowAll(static_cast<typename Contract::Operations*>(nullptr)), wanted);
}

TEST(PublishingContract, ListsTheOperationsOfTheExporter) {
    ExpectContract<Exporter>(ExporterRows);
}

TEST(PublishingContract, ListsTheOperationsOfThe3DComponent) {
    ExpectContract<Component3D>(Component3DRows);
    ExpectContract<CommandTarget3D>(CommandTargetRows);
}

TEST(PublishingContract, ListsTheOperationsOfTheNodeTree) {
    ExpectContract<NodeTree>(NodeTreeRows);
    ExpectContract<ProjectNode>(ProjectNodeRows);
}

TEST(PublishingContract, ListsTheOperationsOfTheArchiveComponent) {
    ExpectContract<ArchiveComponent>(ArchiveRows);
}

TEST(PublishingContract, ListsTheNamesThatTheExportHandlerGives) {
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
