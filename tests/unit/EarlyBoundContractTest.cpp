// The early-bound operations, driven through a raw function table that knows nothing of the
// contracts: what is expected of each stands in the tables below, written out by hand.
#include "components/contracts/Handlers.h"
#include "components/contracts/Kernel.h"

#include <comdef.h>
#include <gmock/gmock.h>

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zt::test {
namespace {

struct Row {
    const char* operation;
    std::size_t index;
    const char* arguments;
};

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

// ---- an object that notes which of its methods was called with what ----

// The first three arguments as the platform's calling convention passes them.
using RawArguments = std::array<std::uintptr_t, 3>;

class RawObject {
  public:
    using Inspect = std::function<void(std::size_t index, const RawArguments& arguments)>;

    explicit RawObject(Inspect inspect) : m_inspect(std::move(inspect)) {}
    IUnknown* Get() { return reinterpret_cast<IUnknown*>(&m_functions); }

    // What the method of that index returns.
    static constexpr HRESULT ResultOf(std::size_t index) {
        return static_cast<HRESULT>(0x00045000 + index);
    }

  private:
    static constexpr std::size_t Size = 128;

    template <std::size_t Index>
    static HRESULT STDMETHODCALLTYPE Method(void* object, std::uintptr_t first,
                                            std::uintptr_t second, std::uintptr_t third) {
        static_cast<RawObject*>(object)->m_inspect(Index, {first, second, third});
        return ResultOf(Index);
    }
    template <std::size_t... Index>
    static void* const* Functions(std::index_sequence<Index...>) {
        static void* const functions[] = {reinterpret_cast<void*>(&Method<Index>)...};
        return functions;
    }

    // First member: a caller's pointer to the object points here.
    void* const* m_functions = Functions(std::make_index_sequence<Size>());
    Inspect m_inspect;
};

// ---- one sample of each type of argument ----

template <typename Type>
struct Sample;

template <>
struct Sample<LONG> {
    static constexpr char Name[] = "LONG";
    LONG value = -1;
    bool Matches(std::uintptr_t raw) const { return static_cast<LONG>(raw) == value; }
};
template <>
struct Sample<BSTR> {
    static constexpr char Name[] = "BSTR";
    _bstr_t text = L"sample";
    BSTR value = text.copy(false);
    bool Matches(std::uintptr_t raw) const { return reinterpret_cast<BSTR>(raw) == value; }
};
template <>
struct Sample<VARIANT> {
    static constexpr char Name[] = "VARIANT";
    VARIANT value = _variant_t(4711L);
    // Passed by a pointer to the callee's own copy.
    bool Matches(std::uintptr_t raw) const {
        const VARIANT& passed = *reinterpret_cast<const VARIANT*>(raw);
        return passed.vt == VT_I4 && passed.lVal == 4711;
    }
};

template <typename Pointed>
struct PlaceSample {
    Pointed place = {};
    Pointed* value = &place;
    bool Matches(std::uintptr_t raw) const { return reinterpret_cast<Pointed*>(raw) == value; }
};
template <>
struct Sample<BSTR*> : PlaceSample<BSTR> {
    static constexpr char Name[] = "BSTR*";
};
template <>
struct Sample<VARIANT*> : PlaceSample<VARIANT> {
    static constexpr char Name[] = "VARIANT*";
};
template <>
struct Sample<IUnknown**> : PlaceSample<IUnknown*> {
    static constexpr char Name[] = "IUnknown**";
};
template <>
struct Sample<IDispatch**> : PlaceSample<IDispatch*> {
    static constexpr char Name[] = "IDispatch**";
};
template <>
struct Sample<KernelProject**> : PlaceSample<KernelProject*> {
    static constexpr char Name[] = "KernelProject**";
};
template <>
struct Sample<MetadataCollection**> : PlaceSample<MetadataCollection*> {
    static constexpr char Name[] = "MetadataCollection**";
};
template <>
struct Sample<MetadataItem**> : PlaceSample<MetadataItem*> {
    static constexpr char Name[] = "MetadataItem**";
};
template <>
struct Sample<IDispatch*> {
    static constexpr char Name[] = "IDispatch*";
    IDispatch* value = reinterpret_cast<IDispatch*>(this);
    bool Matches(std::uintptr_t raw) const { return reinterpret_cast<IDispatch*>(raw) == value; }
};

// ---- the comparison ----

template <typename Operation, typename... Types, std::size_t... At>
void ExpectOperation(const Row& row, std::tuple<Types...>*, std::index_sequence<At...>) {
    SCOPED_TRACE(row.operation);
    EXPECT_STREQ(Operation::Name, row.operation);
    std::string types;
    ((types += (types.empty() ? "" : ", ") + std::string(Sample<Types>::Name)), ...);
    EXPECT_EQ(types, row.arguments);

    std::tuple<Sample<Types>...> samples;
    int calls = 0;
    RawObject object([&](std::size_t index, [[maybe_unused]] const RawArguments& arguments) {
        ++calls;
        EXPECT_EQ(index, row.index);
        EXPECT_THAT((std::vector<bool>{std::get<At>(samples).Matches(arguments[At])...}),
                    testing::Each(true));
    });
    EXPECT_EQ(Operation::Call(object.Get(), std::get<At>(samples).value...),
              RawObject::ResultOf(row.index));
    EXPECT_EQ(calls, 1);
}

template <typename... Operation, std::size_t... At>
void ExpectOperations(const std::vector<Row>& rows, std::tuple<Operation...>*,
                      std::index_sequence<At...>) {
    ASSERT_EQ(sizeof...(Operation), rows.size());
    (ExpectOperation<Operation>(
         rows[At], static_cast<typename Operation::Arguments*>(nullptr),
         std::make_index_sequence<std::tuple_size_v<typename Operation::Arguments>>()),
     ...);
}

template <typename Contract>
void ExpectContract(const std::vector<Row>& rows) {
    using Operations = typename Contract::Operations;
    ExpectOperations(rows, static_cast<Operations*>(nullptr),
                     std::make_index_sequence<std::tuple_size_v<Operations>>());
}

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
