// Function tables for early-bound contracts, generated from the program's own tables: a stand-in
// that lacks an operation of its contract, or takes other arguments, does not compile.
#pragma once

#include "components/Contract.h"
#include "installation/runtime/Call.h"
#include "installation/runtime/StandIn.h"
#include "installation/runtime/Trace.h"

#include <array>
#include <cstddef>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace devinst {

// Highest number of methods that an interface here may have.
constexpr std::size_t TableSize = 128;

namespace detail {

// How each argument type of the contracts takes part in a call.
template <typename T>
struct ArgumentTraits { // in-arguments
    static void Sort(const T& value, std::vector<std::string>& inputs, std::vector<Output>&) {
        if constexpr (std::is_pointer_v<T>)
            inputs.push_back(Described(static_cast<const void*>(value)));
        else
            inputs.push_back(Described(value));
    }
};
template <>
struct ArgumentTraits<BSTR> {
    static void Sort(BSTR value, std::vector<std::string>& inputs, std::vector<Output>&) {
        inputs.push_back(Described(static_cast<const wchar_t*>(value)));
    }
};
template <>
struct ArgumentTraits<BSTR*> {
    static void Sort(BSTR* place, std::vector<std::string>&, std::vector<Output>& outputs) {
        outputs.push_back(Output::Text(place));
    }
};
template <>
struct ArgumentTraits<VARIANT*> {
    static void Sort(VARIANT* place, std::vector<std::string>&, std::vector<Output>& outputs) {
        outputs.push_back(Output::Variant(place));
    }
};
template <>
struct ArgumentTraits<const VARIANT*> { // in-arguments
    static void Sort(const VARIANT* value, std::vector<std::string>& inputs, std::vector<Output>&) {
        inputs.push_back(value != nullptr ? Described(*value) : "null");
    }
};
template <>
struct ArgumentTraits<DWORD*> {
    static void Sort(DWORD* place, std::vector<std::string>&, std::vector<Output>& outputs) {
        outputs.push_back(Output::Number(reinterpret_cast<LONG*>(place)));
    }
};
template <typename Interface>
struct ArgumentTraits<Interface**> {
    static void Sort(Interface** place, std::vector<std::string>&, std::vector<Output>& outputs) {
        outputs.push_back(Output::Interface(reinterpret_cast<IUnknown**>(place)));
    }
};

template <typename Operation, typename Derived, typename Arguments = typename Operation::Arguments>
struct Thunk;

template <typename Operation, typename Derived, typename... Arguments>
struct Thunk<Operation, Derived, std::tuple<Arguments...>> {
    static HRESULT STDMETHODCALLTYPE Call(Face* face, Arguments... arguments) {
        auto& self = static_cast<Derived&>(OwnerOf(face, Operation::Name));
        std::vector<std::string> inputs;
        std::vector<Output> outputs;
        (ArgumentTraits<Arguments>::Sort(arguments, inputs, outputs), ...);
        return Perform({self, Operation::Name, MethodKey(Operation::Index)}, inputs, outputs,
                       [&] { return self.On(Operation{}, arguments...); });
    }
};

template <typename Contract, std::size_t Index>
HRESULT STDMETHODCALLTYPE Unlisted(Face* face) {
    FailLoudly("method " + std::to_string(Index) + " of " +
               OwnerOf(face, "a method that no table lists").Label() + " as " + Contract::Name +
               ", which no table lists");
}

template <typename Contract, std::size_t... Indices>
constexpr auto UnlistedFunctions(std::index_sequence<Indices...>) {
    return std::array<const void*, TableSize>{
        reinterpret_cast<const void*>(&Unlisted<Contract, Indices>)...};
}

template <typename Contract, typename Derived, typename... Operations>
std::array<const void*, TableSize> BuildTable(std::tuple<Operations...>*) {
    auto table = UnlistedFunctions<Contract>(std::make_index_sequence<TableSize>());
    for (std::size_t i = 0; i < std::size(UnknownFunctions); ++i)
        table[i] = UnknownFunctions[i];
    if constexpr (std::is_base_of_v<IDispatch, Contract>) {
        for (std::size_t i = 0; i < std::size(DispatchFunctions); ++i)
            table[3 + i] = DispatchFunctions[i];
    }
    ((table[Operations::Index] = reinterpret_cast<const void*>(&Thunk<Operations, Derived>::Call)),
     ...);
    return table;
}

} // namespace detail

// The function table of Contract for objects of class Derived, which derives from StandIn and has a
// public `HRESULT On(Contract::Operation, arguments...)` for each operation. To be handed to
// StandIn::AddFace.
template <typename Contract, typename Derived>
const void* const* FunctionTable() {
    static const auto table =
        detail::BuildTable<Contract, Derived>(static_cast<typename Contract::Operations*>(nullptr));
    return table.data();
}

// The contract of objects that answer IDispatch and nothing else of their own.
struct DispatchOnly : IDispatch {
    static constexpr char Name[] = "IDispatch";
    using Operations = std::tuple<>;
};

} // namespace devinst
