// The operations of the contracts, written out by hand, and how each form of operation is called.
#include "components/Automation.h"
#include "components/Creation.h"
#include "components/contracts/Administration.h"
#include "components/contracts/Publishing.h"
#include "tests/support/FakeDispatch.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace zt::test {
namespace {

template <typename Operation, std::size_t Index, typename... Types>
consteval bool IsMethod() {
    return Operation::Index == Index &&
           std::is_same_v<typename Operation::Arguments, std::tuple<Types...>>;
}

template <typename Operation, DISPID Id, typename Kind, typename Result, typename... Types>
consteval bool IsCall() {
    return Operation::Id == Id && Operation::Kind == Kind::Kind &&
           std::is_same_v<typename Operation::Result, Result> &&
           std::is_same_v<typename Operation::Arguments, std::tuple<Types...>>;
}

// KernelAdmin
static_assert(std::tuple_size_v<KernelAdmin::Operations> == 15);
static_assert(IsMethod<KernelAdmin::ShutDown, 17, LONG>());
static_assert(IsMethod<KernelAdmin::LoadTypes, 33, BSTR>());
static_assert(IsMethod<KernelAdmin::LoadDeclarations, 34, BSTR>());
static_assert(IsMethod<KernelAdmin::SetSaveMode, 35, LONG>());
static_assert(IsMethod<KernelAdmin::CloseProjects, 42, LONG>());
static_assert(IsMethod<KernelAdmin::PutClientName, 49, BSTR>());
static_assert(IsMethod<KernelAdmin::SetProjectsLocation, 64, BSTR>());
static_assert(IsMethod<KernelAdmin::OpenProject, 66, LONG, BSTR, KernelProject**>());
static_assert(IsMethod<KernelAdmin::LoadRefTables, 85, BSTR>());
static_assert(IsMethod<KernelAdmin::LoadMetadata, 86, BSTR>());
static_assert(IsMethod<KernelAdmin::LoadCommandTemplates, 87, BSTR>());
static_assert(IsMethod<KernelAdmin::GetSpecificationFolder, 89, BSTR*>());
static_assert(IsMethod<KernelAdmin::PutSpecificationFolder, 90, BSTR>());
static_assert(IsMethod<KernelAdmin::LoadRefTablesBackup, 91, BSTR>());
static_assert(IsMethod<KernelAdmin::SelectProduct, 97, LONG>());

// KernelProject
static_assert(std::tuple_size_v<KernelProject::Operations> == 16);
static_assert(IsMethod<KernelProject::GetStoredName, 7, BSTR*>());
static_assert(IsMethod<KernelProject::GetNodeTree, 10, IUnknown**>());
static_assert(IsMethod<KernelProject::Load, 15, LONG>());
static_assert(IsMethod<KernelProject::Rename, 22, BSTR>());
static_assert(IsMethod<KernelProject::GetDeclaration, 35, BSTR, IDispatch**>());
static_assert(IsMethod<KernelProject::GetDocumentName, 36, BSTR*>());
static_assert(IsMethod<KernelProject::GetMetadata, 44, MetadataCollection**>());
static_assert(IsMethod<KernelProject::InsertMetadata, 45, LONG, IDispatch*, MetadataItem**>());
static_assert(IsMethod<KernelProject::StartNewRevision, 49>());
static_assert(IsMethod<KernelProject::GetSpecificationName, 50, BSTR*>());
static_assert(IsMethod<KernelProject::GetSpecificationVersion, 52, BSTR*>());
static_assert(IsMethod<KernelProject::GetConfigurationKey, 54, BSTR*>());
static_assert(IsMethod<KernelProject::AttachDocument, 59, BSTR, BSTR>());
static_assert(IsMethod<KernelProject::GenerateDocument, 61, BSTR>());
static_assert(IsMethod<KernelProject::GetLanguage, 64, BSTR*>());
static_assert(IsMethod<KernelProject::PutLanguage, 65, BSTR>());

// MetadataCollection
static_assert(std::tuple_size_v<MetadataCollection::Operations> == 1);
static_assert(IsMethod<MetadataCollection::FindItem, 7, VARIANT, MetadataItem**>());

// MetadataItem
static_assert(std::tuple_size_v<MetadataItem::Operations> == 2);
static_assert(IsMethod<MetadataItem::SetValue, 9, BSTR>());
static_assert(IsMethod<MetadataItem::GetValue, 12, VARIANT*>());

// ScriptExporter
static_assert(std::tuple_size_v<ScriptExporter::Operations> == 1);
static_assert(IsMethod<ScriptExporter::LoadScript, 3, BSTR>());

// ExportHandler
static_assert(std::tuple_size_v<ExportHandler::Operations> == 2);
static_assert(IsMethod<ExportHandler::GetFirstName, 8, KernelProject*, BSTR*>());
static_assert(IsMethod<ExportHandler::GetSecondName, 9, KernelProject*, BSTR*>());

// Exporter
static_assert(std::tuple_size_v<Exporter::Operations> == 9);
static_assert(IsMethod<Exporter::PutDestinationFolder, 10, BSTR>());
static_assert(IsMethod<Exporter::Export, 11>());
static_assert(IsMethod<Exporter::PutAxesModelPath, 17, BSTR>());
static_assert(IsMethod<Exporter::PutKernel, 35, KernelAdmin*>());
static_assert(IsMethod<Exporter::PutSpecificationFileName, 39, BSTR>());
static_assert(IsMethod<Exporter::PutAxesPosition, 45, LONG>());
static_assert(IsMethod<Exporter::PutOptionA, 46, LONG>());
static_assert(IsMethod<Exporter::PutLanguage, 51, BSTR>());
static_assert(IsMethod<Exporter::PutOptionB, 52, LONG>());

// Component3D
static_assert(std::tuple_size_v<Component3D::Operations> == 10);
static_assert(IsMethod<Component3D::PutViewer, 7, IDispatch*>());
static_assert(IsMethod<Component3D::PutKernel, 8, KernelAdmin*>());
static_assert(IsMethod<Component3D::PutLearningMode, 50, VARIANT_BOOL>());
static_assert(IsMethod<Component3D::PutResourceTag, 53, BSTR>());
static_assert(IsMethod<Component3D::PutAxesFolder, 54, BSTR>());
static_assert(IsMethod<Component3D::PutSpecificationFileName, 61, BSTR>());
static_assert(IsMethod<Component3D::PutOptionC, 64, LONG>());
static_assert(IsMethod<Component3D::PutLanguage, 68, BSTR>());
static_assert(IsMethod<Component3D::PublishView, 79, BSTR, BSTR, BSTR, LONG, LONG, VARIANT>());
static_assert(IsMethod<Component3D::PublishText, 85, KernelAdmin*, BSTR, BSTR, VARIANT>());

// CommandTarget3D
static_assert(std::tuple_size_v<CommandTarget3D::Operations> == 1);
static_assert(IsMethod<CommandTarget3D::Execute, 3, LONG, const VARIANT*, const VARIANT*>());

// NodeTree
static_assert(std::tuple_size_v<NodeTree::Operations> == 2);
static_assert(IsMethod<NodeTree::GetItem, 7, VARIANT, IUnknown**>());
static_assert(IsMethod<NodeTree::GetChildren, 9, IEnumUnknown**>());

// ProjectNode
static_assert(std::tuple_size_v<ProjectNode::Operations> == 2);
static_assert(IsMethod<ProjectNode::GetChildren, 9, IEnumUnknown**>());
static_assert(IsMethod<ProjectNode::GetAttachedObject, 20, IUnknown**>());

// ArchiveComponent
static_assert(std::tuple_size_v<ArchiveComponent::Operations> == 3);
static_assert(IsMethod<ArchiveComponent::Create, 7, BSTR, LONG>());
static_assert(IsMethod<ArchiveComponent::Close, 8>());
static_assert(IsMethod<ArchiveComponent::AddFile, 9, BSTR, BSTR, VARIANT_BOOL>());

// Administration
static_assert(std::tuple_size_v<Administration::Operations> == 2);
static_assert(IsCall<Administration::OpenArchive, 2, Method, Object, Text, Int32>());
static_assert(IsCall<Administration::OpenConfiguration, 6, Method, Object, Text>());

// Configuration
static_assert(std::tuple_size_v<Configuration::Operations> == 8);
static_assert(IsCall<Configuration::WorkFolder, 5, PropertyGet, Text>());
static_assert(IsCall<Configuration::ImportedProjects, 9, PropertyGet, Value>());
static_assert(IsCall<Configuration::ConfigurationFile, 10, PropertyGet, Text>());
static_assert(IsCall<Configuration::ClientName, 11, PropertyPut, Nothing, Text>());
static_assert(IsCall<Configuration::Open, 12, Method, Nothing>());
static_assert(IsCall<Configuration::Close, 13, Method, Nothing, Boolean>());
static_assert(IsCall<Configuration::ExportProject, 14, Method, Object, Text, Int32>());
static_assert(IsCall<Configuration::ImportProject, 15, Method, Nothing, Object>());

// Archive
static_assert(std::tuple_size_v<Archive::Operations> == 3);
static_assert(IsCall<Archive::Projects, 1, PropertyGet, Value>());
static_assert(IsCall<Archive::ExtractProject, 2, Method, Object, Text, Text>());
static_assert(IsCall<Archive::AddProject, 3, Method, Nothing, Object, Text, Text>());

// ViewerControl
static_assert(std::tuple_size_v<ViewerControl::Operations> == 1);
static_assert(IsCall<ViewerControl::Viewer, 2, PropertyGet, Object>());
// The interfaces that are dual have the methods of IDispatch before their own.
template <typename... Contract>
constexpr bool AreDual = (std::is_base_of_v<IDispatch, Contract> && ...);
static_assert(AreDual<KernelAdmin, KernelProject, MetadataCollection, MetadataItem, Exporter,
                      Component3D, NodeTree, ProjectNode, ArchiveComponent>);
static_assert(!AreDual<CommandTarget3D> && !AreDual<ScriptExporter> && !AreDual<ExportHandler>);

// ---- the interfaces and classes ----

TEST(Contract, NamesTheInterfaceOfEachComponent) {
    EXPECT_EQ(IidOf<KernelAdmin>(), IID_KernelAdmin);
    EXPECT_EQ(IidOf<ExportHandler>(), IID_ExportHandler);
    EXPECT_EQ(IidOf<ScriptExporter>(), IID_ScriptExporter);
    EXPECT_EQ(IidOf<Exporter>(), IID_Exporter);
    EXPECT_EQ(IidOf<Component3D>(), IID_3DComponent);
    EXPECT_EQ(IidOf<CommandTarget3D>(), IID_3DCommandTarget);
    EXPECT_EQ(IidOf<ProjectNode>(), IID_ProjectNode);
    EXPECT_EQ(IidOf<ArchiveComponent>(), IID_Archive);
    EXPECT_EQ(IidOf<IDispatch>(), IID_IDispatch);
}

TEST(Contract, NamesTheClassesThatAreCreatedByName) {
    EXPECT_STREQ(Administration::ProgId, L"KV.Admin");
    EXPECT_STREQ(Component3D::ProgId, L"KV.3D.1");
    EXPECT_STREQ(ViewerControl::ProgId, L"Faldera.Control.1");
}

// ---- early-bound ----

// The first arguments as the platform's calling convention passes them; those that a caller did not
// pass are whatever stood there.
using RawArguments = std::array<std::uintptr_t, 6>;

// An object that knows nothing of the contracts and notes which of its methods was called.
struct RawObject {
    static constexpr HRESULT Answer = 0x00045678;

    template <std::size_t Index>
    static HRESULT STDMETHODCALLTYPE Method(void* object, std::uintptr_t first,
                                            std::uintptr_t second, std::uintptr_t third,
                                            std::uintptr_t fourth, std::uintptr_t fifth,
                                            std::uintptr_t sixth) {
        auto& self = *static_cast<RawObject*>(object);
        self.index = Index;
        self.inspect({first, second, third, fourth, fifth, sixth});
        return Answer;
    }
    template <std::size_t... Index>
    static void* const* Functions(std::index_sequence<Index...>) {
        static void* const functions[] = {reinterpret_cast<void*>(&Method<Index>)...};
        return functions;
    }
    IUnknown* Get() { return reinterpret_cast<IUnknown*>(this); }

    // First member: what a caller's pointer to an object points to.
    void* const* functions = Functions(std::make_index_sequence<128>());
    std::size_t index = 0;
    std::function<void(const RawArguments&)> inspect = [](const RawArguments&) {};
};

TEST(EarlyBound, CallsTheMethodOfItsIndexAndReturnsItsResult) {
    RawObject object;
    EXPECT_EQ((EarlyBound<3>::Call(object.Get())), RawObject::Answer);
    EXPECT_EQ(object.index, 3u);
    object.inspect = [](const RawArguments& raw) { EXPECT_EQ(static_cast<LONG>(raw[0]), -1); };
    EXPECT_EQ((EarlyBound<97, LONG>::Call(object.Get(), -1)), RawObject::Answer);
    EXPECT_EQ(object.index, 97u);
}

TEST(EarlyBound, PassesEachArgumentInItsPlace) {
    using Method = EarlyBound<79, BSTR, VARIANT, VARIANT_BOOL, BSTR*, LONG, const VARIANT*>;
    RawObject object;
    const _bstr_t text(L"sample");
    const _variant_t number(4711L);
    BSTR place = nullptr;
    object.inspect = [&](const RawArguments& raw) {
        EXPECT_EQ(raw[0], reinterpret_cast<std::uintptr_t>(text.copy(false)));
        // A VARIANT is passed by a pointer to the callee's own copy.
        const VARIANT& copy = *reinterpret_cast<const VARIANT*>(raw[1]);
        EXPECT_EQ(copy.vt, VT_I4);
        EXPECT_EQ(copy.lVal, 4711);
        EXPECT_EQ(static_cast<VARIANT_BOOL>(raw[2]), VARIANT_TRUE);
        EXPECT_EQ(raw[3], reinterpret_cast<std::uintptr_t>(&place));
        EXPECT_EQ(static_cast<LONG>(raw[4]), 7);
        EXPECT_EQ(raw[5], reinterpret_cast<std::uintptr_t>(&number));
    };
    Method::Call(object.Get(), text.copy(false), number, VARIANT_TRUE, &place, 7, &number);
    EXPECT_EQ(object.index, 79u);
}

template <typename Operation, typename... Arguments>
concept Accepts = requires(IUnknown* object, Arguments... arguments) {
    Operation::Call(object, arguments...);
};
static_assert(Accepts<KernelAdmin::OpenProject, LONG, BSTR, KernelProject**>);
static_assert(!Accepts<KernelAdmin::OpenProject, BSTR, LONG, KernelProject**>);
static_assert(!Accepts<KernelAdmin::OpenProject, LONG, BSTR, MetadataItem**>);
static_assert(!Accepts<KernelAdmin::OpenProject, LONG, BSTR>);
static_assert(!Accepts<KernelAdmin::PutClientName, const wchar_t*>);

// ---- late-bound ----

struct Sample {
    static constexpr char Name[] = "Sample";
    using Everything = LateBound<2, Method, Object, Text, Text, Int32, Boolean, Boolean, Object>;
    using Put = LateBound<11, PropertyPut, Nothing, Text>;
};

class LateBoundCall : public testing::Test {
  protected:
    FakeDispatch m_object;
    FakeDispatch m_component;
    AutomationObject<Sample> m_sample{ComPtr<IDispatch>(&m_component)};
};

TEST_F(LateBoundCall, PassesEachArgumentAsItsTypeTheLastOneFirst) {
    m_sample.Call<Sample::Everything>(L"first", nullptr, -1, TRUE, FALSE, &m_object);
    ASSERT_EQ(m_component.invocations.size(), 1u);
    const Invocation& call = m_component.invocations[0];
    EXPECT_EQ(call.id, 2);
    EXPECT_EQ(call.kind, DISPATCH_METHOD);
    ASSERT_EQ(call.arguments.size(), 6u); // turned round by the record
    EXPECT_EQ(call.arguments[0], _variant_t(L"first"));
    EXPECT_EQ(call.arguments[1].vt, VT_BSTR);
    EXPECT_EQ(SysStringLen(call.arguments[1].bstrVal), 0u);
    EXPECT_EQ(call.arguments[2], _variant_t(-1L));
    EXPECT_EQ(call.arguments[3], _variant_t(true));
    EXPECT_EQ(call.arguments[4], _variant_t(false));
    EXPECT_EQ(call.arguments[5].vt, VT_DISPATCH);
    EXPECT_EQ(call.arguments[5].pdispVal, &m_object);
    m_component.invocations.clear();
    EXPECT_EQ(m_object.References(), 0);
}

TEST_F(LateBoundCall, AsksForAResultWhereTheContractListsOne) {
    m_sample.Call<Sample::Everything>(L"", L"", 0, TRUE, TRUE, nullptr);
    m_sample.Call<Sample::Put>(L"name");
    ASSERT_EQ(m_component.invocations.size(), 2u);
    EXPECT_TRUE(m_component.invocations[0].asksResult);
    EXPECT_FALSE(m_component.invocations[1].asksResult);
    EXPECT_EQ(m_component.invocations[1].kind, DISPATCH_PROPERTYPUT);
}

TEST_F(LateBoundCall, PassesATextOf30000Characters) {
    m_sample.Call<Sample::Put>(std::wstring(30000, L'x').c_str());
    ASSERT_EQ(m_component.invocations.size(), 1u);
    EXPECT_EQ(SysStringLen(m_component.invocations[0].arguments.at(0).bstrVal), 30000u);
}

} // namespace
} // namespace zt::test
