// Drives the operations of early-bound contracts through a raw function table that knows nothing of
// them: what is expected of each stands in tables that the tests write out by hand.
#pragma once

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

struct Row {
    const char* operation;
    std::size_t index;
    const char* arguments;
};

// ---- an object that notes which of its methods was called with what ----

// The first arguments as the platform's calling convention passes them; those that a caller did not
// pass are whatever stood there.
using RawArguments = std::array<std::uintptr_t, 6>;

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
                                            std::uintptr_t second, std::uintptr_t third,
                                            std::uintptr_t fourth, std::uintptr_t fifth,
                                            std::uintptr_t sixth) {
        static_cast<RawObject*>(object)->m_inspect(Index,
                                                   {first, second, third, fourth, fifth, sixth});
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
struct Sample<IEnumUnknown**> : PlaceSample<IEnumUnknown*> {
    static constexpr char Name[] = "IEnumUnknown**";
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

// An object that nobody calls.
template <typename Interface>
struct ObjectSample {
    Interface* value = reinterpret_cast<Interface*>(this);
    bool Matches(std::uintptr_t raw) const { return reinterpret_cast<Interface*>(raw) == value; }
};
template <>
struct Sample<IDispatch*> : ObjectSample<IDispatch> {
    static constexpr char Name[] = "IDispatch*";
};
template <>
struct Sample<KernelAdmin*> : ObjectSample<KernelAdmin> {
    static constexpr char Name[] = "KernelAdmin*";
};
template <>
struct Sample<KernelProject*> : ObjectSample<KernelProject> {
    static constexpr char Name[] = "KernelProject*";
};
template <>
struct Sample<const VARIANT*> : ObjectSample<const VARIANT> {
    static constexpr char Name[] = "const VARIANT*";
};
template <>
struct Sample<VARIANT_BOOL> {
    static constexpr char Name[] = "VARIANT_BOOL";
    VARIANT_BOOL value = VARIANT_TRUE;
    bool Matches(std::uintptr_t raw) const { return static_cast<VARIANT_BOOL>(raw) == value; }
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

// That the contract lists just these operations, and calls each of them as its row tells.
template <typename Contract>
void ExpectContract(const std::vector<Row>& rows) {
    using Operations = typename Contract::Operations;
    ExpectOperations(rows, static_cast<Operations*>(nullptr),
                     std::make_index_sequence<std::tuple_size_v<Operations>>());
}

} // namespace zt::test
