// The operations of the kernel and of the handlers against tables written out by hand.
#include "components/contracts/Handlers.h"
#include "components/contracts/Kernel.h"

#include "tests/support/RawContract.h"

namespace zt::test {
namespace {

const std::vector<Row> KernelAdminRows = {
    {"ShutDown", 17, "LONG"},
    {"LoadTypes", 33, "BSTR"},
    {"LoadDeclarations", 34, "BSTR"},
    {"SetSaveMode", 35, "LONG"},
    {"CloseProjects", 42, "LONG"},
    {"PutClientName", 49, "BSTR"},
    {"SetProjectsLocation", 64, "BSTR"},
    {"OpenProject", 66, "LONG, BSTR, KernelProject**"},
    {"LoadRefTables", 85, "BSTR"},
    {"LoadMetadata", 86, "BSTR"},
    {"LoadCommandTemplates", 87, "BSTR"},
    {"GetSpecificationFolder", 89, "BSTR*"},
    {"PutSpecificationFolder", 90, "BSTR"},
    {"LoadRefTablesBackup", 91, "BSTR"},
    {"SelectProduct", 97, "LONG"},
};

const std::vector<Row> KernelProjectRows = {
    {"GetStoredName", 7, "BSTR*"},
    {"GetNodeTree", 10, "IUnknown**"},
    {"Load", 15, "LONG"},
    {"Rename", 22, "BSTR"},
    {"GetDeclaration", 35, "BSTR, IDispatch**"},
    {"GetDocumentName", 36, "BSTR*"},
    {"GetMetadata", 44, "MetadataCollection**"},
    {"InsertMetadata", 45, "LONG, IDispatch*, MetadataItem**"},
    {"StartNewRevision", 49, ""},
    {"GetSpecificationName", 50, "BSTR*"},
    {"GetSpecificationVersion", 52, "BSTR*"},
    {"GetConfigurationKey", 54, "BSTR*"},
    {"AttachDocument", 59, "BSTR, BSTR"},
    {"GenerateDocument", 61, "BSTR"},
    {"GetLanguage", 64, "BSTR*"},
    {"PutLanguage", 65, "BSTR"},
};

const std::vector<Row> MetadataCollectionRows = {{"FindItem", 7, "VARIANT, MetadataItem**"}};

const std::vector<Row> MetadataItemRows = {
    {"SetValue", 9, "BSTR"},
    {"GetValue", 12, "VARIANT*"},
};

const std::vector<Row> ScriptExporterRows = {{"LoadScript", 3, "BSTR"}};

TEST(EarlyBoundContract, CallsEveryMethodOfTheKernelAdminAsListed) {
    ExpectContract<KernelAdmin>(KernelAdminRows);
}

TEST(EarlyBoundContract, CallsEveryMethodOfTheKernelProjectAsListed) {
    ExpectContract<KernelProject>(KernelProjectRows);
}

TEST(EarlyBoundContract, CallsEveryMethodOfTheMetadataCollectionAsListed) {
    ExpectContract<MetadataCollection>(MetadataCollectionRows);
}

TEST(EarlyBoundContract, CallsEveryMethodOfTheMetadataItemAsListed) {
    ExpectContract<MetadataItem>(MetadataItemRows);
}

TEST(EarlyBoundContract, CallsEveryMethodOfTheScriptExporterAsListed) {
    ExpectContract<ScriptExporter>(ScriptExporterRows);
}

// ---- wrong arguments do not compile ----

template <typename Operation, typename... Arguments>
concept Accepts = requires(IUnknown* object, Arguments... arguments) {
    Operation::Call(object, arguments...);
};

static_assert(Accepts<KernelAdmin::OpenProject, LONG, BSTR, KernelProject**>);
static_assert(!Accepts<KernelAdmin::OpenProject, BSTR, LONG, KernelProject**>);
static_assert(!Accepts<KernelAdmin::OpenProject, LONG, BSTR, MetadataItem**>);
static_assert(!Accepts<KernelAdmin::OpenProject, LONG, BSTR>);
static_assert(!Accepts<KernelAdmin::PutClientName, const wchar_t*>);
static_assert(!Accepts<KernelAdmin::PutClientName, LONG>);
static_assert(!Accepts<KernelAdmin::GetSpecificationFolder, BSTR>);
static_assert(!Accepts<KernelProject::StartNewRevision, LONG>);
static_assert(!Accepts<MetadataCollection::FindItem, IDispatch*, MetadataItem**>);
static_assert(!Accepts<MetadataItem::SetValue, VARIANT>);

} // namespace
} // namespace zt::test
