// The late-bound operations, driven through Invoke of an object that knows nothing of the
// contracts: what is expected of each stands in the tables below, written out by hand.
#include "components/Automation.h"
#include "components/contracts/Administration.h"
#include "tests/support/FakeDispatch.h"

#include <gtest/gtest.h>

namespace zt::test {
namespace {

struct Row {
    const char* operation;
    DISPID id;
    WORD kind;
    VARTYPE result;
    std::vector<VARTYPE> arguments;
};

const std::vector<Row> AdministrationRows = {
    {"OpenArchive", 2, DISPATCH_METHOD, VT_DISPATCH, {VT_BSTR, VT_I4}},
    {"OpenConfiguration", 6, DISPATCH_METHOD, VT_DISPATCH, {VT_BSTR}},
};

const std::vector<Row> ConfigurationRows = {
    {"WorkFolder", 5, DISPATCH_PROPERTYGET, VT_BSTR, {}},
    {"ImportedProjects", 9, DISPATCH_PROPERTYGET, VT_VARIANT, {}},
    {"ConfigurationFile", 10, DISPATCH_PROPERTYGET, VT_BSTR, {}},
    {"ClientName", 11, DISPATCH_PROPERTYPUT, VT_EMPTY, {VT_BSTR}},
    {"Open", 12, DISPATCH_METHOD, VT_EMPTY, {}},
    {"Close", 13, DISPATCH_METHOD, VT_EMPTY, {VT_BOOL}},
    {"ExportProject", 14, DISPATCH_METHOD, VT_DISPATCH, {VT_BSTR, VT_I4}},
    {"ImportProject", 15, DISPATCH_METHOD, VT_EMPTY, {VT_DISPATCH}},
};

const std::vector<Row> ArchiveRows = {
    {"Projects", 1, DISPATCH_PROPERTYGET, VT_VARIANT, {}},
    {"ExtractProject", 2, DISPATCH_METHOD, VT_DISPATCH, {VT_BSTR, VT_BSTR}},
    {"AddProject", 3, DISPATCH_METHOD, VT_EMPTY, {VT_DISPATCH, VT_BSTR, VT_BSTR}},
};

// ---- one sample of each type of argument and result ----

// Tells the samples of one call apart.
template <typename Type>
auto SampleOf(std::size_t position, IDispatch* object) {
    if constexpr (std::is_same_v<Type, Text>)
        return position == 0 ? L"first" : position == 1 ? L"second" : L"third";
    else if constexpr (std::is_same_v<Type, Int32>)
        return -1L;
    else if constexpr (std::is_same_v<Type, Boolean>)
        return TRUE;
    else
        return object;
}

void ExpectSample(const VARIANT& argument, VARTYPE type, std::size_t position, IDispatch* object) {
    ASSERT_EQ(argument.vt, type);
    const wchar_t* const texts[] = {L"first", L"second", L"third"};
    if (type == VT_BSTR)
        EXPECT_STREQ(argument.bstrVal, texts[position]);
    else if (type == VT_I4)
        EXPECT_EQ(argument.lVal, -1);
    else if (type == VT_BOOL)
        EXPECT_EQ(argument.boolVal, VARIANT_TRUE);
    else
        EXPECT_EQ(argument.pdispVal, object);
}

_variant_t ResultSample(VARTYPE type, IDispatch* object) {
    if (type == VT_BSTR)
        return L"result";
    return type == VT_DISPATCH ? _variant_t(object) : _variant_t(4711L);
}

void ExpectResult(const _bstr_t& result, IDispatch*) {
    EXPECT_STREQ(result, L"result");
}
void ExpectResult(const ComPtr<IDispatch>& result, IDispatch* object) {
    EXPECT_EQ(result.Get(), object);
}
void ExpectResult(const _variant_t& result, IDispatch*) {
    EXPECT_EQ(result.vt, VT_I4);
    EXPECT_EQ(result.lVal, 4711);
}

// ---- the comparison ----

void ExpectInvocation(const Invocation& call, const Row& row, IDispatch* object) {
    EXPECT_EQ(call.id, row.id);
    EXPECT_EQ(call.kind, row.kind);
    EXPECT_EQ(call.iid, IID_NULL);
    EXPECT_EQ(call.asksResult, row.result != VT_EMPTY);
    EXPECT_TRUE(call.asksInfo);
    const bool isPut = row.kind == DISPATCH_PROPERTYPUT;
    EXPECT_EQ(call.named, std::vector<DISPID>(isPut ? 1 : 0, -3));
    ASSERT_EQ(call.arguments.size(), row.arguments.size());
    for (std::size_t i = 0; i < row.arguments.size(); ++i)
        ExpectSample(call.arguments[i], row.arguments[i], i, object);
}

template <typename Contract, typename Operation, typename... Types, std::size_t... At>
void ExpectOperation(const Row& row, std::tuple<Types...>*, std::index_sequence<At...>) {
    SCOPED_TRACE(row.operation);
    EXPECT_STREQ(Operation::Name, row.operation);
    EXPECT_EQ(Operation::Result::Type, row.result);
    FakeDispatch object;
    FakeDispatch component;
    component.answer = Give(ResultSample(row.result, &object));
    AutomationObject<Contract> wrapper{ComPtr<IDispatch>(&component)};
    if constexpr (std::is_same_v<typename Operation::Result, Nothing>)
        wrapper.template Call<Operation>(SampleOf<Types>(At, &object)...);
    else
        ExpectResult(wrapper.template Call<Operation>(SampleOf<Types>(At, &object)...), &object);
    ASSERT_EQ(component.invocations.size(), 1u);
    ExpectInvocation(component.invocations[0], row, &object);
    component.invocations.clear();
    component.answer = nullptr;
}

template <typename Contract, typename... Operation, std::size_t... At>
void ExpectOperations(const std::vector<Row>& rows, std::tuple<Operation...>*,
                      std::index_sequence<At...>) {
    ASSERT_EQ(sizeof...(Operation), rows.size());
    (ExpectOperation<Contract, Operation>(
         rows[At], static_cast<typename Operation::Arguments*>(nullptr),
         std::make_index_sequence<std::tuple_size_v<typename Operation::Arguments>>()),
     ...);
}

template <typename Contract>
void ExpectContract(const std::vector<Row>& rows) {
    using Operations = typename Contract::Operations;
    ExpectOperations<Contract>(rows, static_cast<Operations*>(nullptr),
                               std::make_index_sequence<std::tuple_size_v<Operations>>());
}

TEST(LateBoundContract, CallsEveryOperationOfTheAdministrationAsListed) {
    EXPECT_STREQ(Administration::ProgId, L"KV.Admin");
    ExpectContract<Administration>(AdministrationRows);
}

TEST(LateBoundContract, CallsEveryOperationOfTheConfigurationAsListed) {
    ExpectContract<Configuration>(ConfigurationRows);
}

TEST(LateBoundContract, CallsEveryOperationOfTheArchiveAsListed) {
    ExpectContract<Archive>(ArchiveRows);
}

// ---- wrong calls are refused, and a refusal raises ----

template <typename Call>
HRESULT RaisedBy(Call call) {
    try {
        call();
    } catch (COleException* failure) {
        const HRESULT code = failure->m_sc;
        failure->Delete();
        return code;
    }
    return S_OK;
}

template <typename Contract, typename Wrong, typename... Arguments>
HRESULT ResultOf(CallList& calls, Arguments... arguments) {
    FakeAutomation<Contract> component(calls);
    AutomationObject<Contract> wrapper{ComPtr<IDispatch>(&component)};
    return RaisedBy([&] { wrapper.template Call<Wrong>(arguments...); });
}

template <typename Contract, typename Kind, DISPID Id, typename Right, typename Result,
          typename... Types>
void ExpectKindRefused(const LateBound<Id, Right, Result, Types...>*) {
    CallList calls;
    const HRESULT raised = ResultOf<Contract, LateBound<Id, Kind, Result, Types...>>(
        calls, SampleOf<Types>(0, nullptr)...);
    EXPECT_EQ(raised, Kind::Kind == Right::Kind ? S_OK : DISP_E_MEMBERNOTFOUND) << Id;
    EXPECT_EQ(calls.size(), Kind::Kind == Right::Kind ? 1u : 0u) << Id;
}

template <typename Contract, DISPID Id, typename Right, typename Result, typename... Types>
void ExpectTypesRefused(const LateBound<Id, Right, Result, Types...>*) {
    CallList calls;
    const _variant_t wrong(1.5, VT_R8);
    const VARIANT* const value = &wrong;
    if constexpr (sizeof...(Types) != 0) {
        // As many arguments, each of a type that no operation takes.
        const HRESULT raised =
            ResultOf<Contract,
                     LateBound<Id, Right, Result, std::conditional_t<true, Value, Types>...>>(
                calls, (static_cast<void>(SampleOf<Types>(0, nullptr)), value)...);
        EXPECT_EQ(raised, DISP_E_TYPEMISMATCH) << Id;
    }
    const HRESULT raised = ResultOf<Contract, LateBound<Id, Right, Result, Types..., Value>>(
        calls, SampleOf<Types>(0, nullptr)..., value);
    EXPECT_EQ(raised, DISP_E_BADPARAMCOUNT) << Id;
    EXPECT_TRUE(calls.empty()) << Id;
}

template <typename Contract, typename... Operation>
void ExpectOnlyListedCallsAreTaken(std::tuple<Operation...>*) {
    (ExpectKindRefused<Contract, Method>(static_cast<Operation*>(nullptr)), ...);
    (ExpectKindRefused<Contract, PropertyGet>(static_cast<Operation*>(nullptr)), ...);
    (ExpectKindRefused<Contract, PropertyPut>(static_cast<Operation*>(nullptr)), ...);
    (ExpectTypesRefused<Contract>(static_cast<Operation*>(nullptr)), ...);
    CallList calls;
    EXPECT_EQ((ResultOf<Contract, LateBound<99, Method, Nothing>>(calls)), DISP_E_MEMBERNOTFOUND);
}

TEST(LateBoundContract, HasWrongKindsAndTypesRefusedByTheAdministration) {
    ExpectOnlyListedCallsAreTaken<Administration>(
        static_cast<Administration::Operations*>(nullptr));
}

TEST(LateBoundContract, HasWrongKindsAndTypesRefusedByTheConfiguration) {
    ExpectOnlyListedCallsAreTaken<Configuration>(static_cast<Configuration::Operations*>(nullptr));
}

TEST(LateBoundContract, HasWrongKindsAndTypesRefusedByTheArchive) {
    ExpectOnlyListedCallsAreTaken<Archive>(static_cast<Archive::Operations*>(nullptr));
}

} // namespace
} // namespace zt::test
