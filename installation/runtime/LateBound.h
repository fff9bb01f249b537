// Dispatching of automation calls to the operations of a late-bound contract, generated from the
// program's own tables.
#pragma once

#include "components/Contract.h"
#include "installation/runtime/Call.h"
#include "installation/runtime/DispatchArguments.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/StandIn.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>

namespace zt {

// For stand-ins' own contracts, beside the kinds that the program uses: a property put by
// reference.
struct PropertyPutReference {
    static constexpr WORD Kind = DISPATCH_PROPERTYPUTREF;
};

} // namespace zt

namespace devinst {

namespace detail {

// How the types of late-bound contracts reach the stand-in's operation.
template <typename Type>
struct DispatchType;

template <>
struct DispatchType<zt::Text> {
    static BSTR In(const VARIANT& value) { return value.bstrVal; }
    static BSTR* Out(VARIANT& value) { return &value.bstrVal; }
};
template <>
struct DispatchType<zt::Int32> {
    static LONG In(const VARIANT& value) { return value.lVal; }
    static LONG* Out(VARIANT& value) { return &value.lVal; }
};
template <>
struct DispatchType<zt::Boolean> {
    static VARIANT_BOOL In(const VARIANT& value) { return value.boolVal; }
    static VARIANT_BOOL* Out(VARIANT& value) { return &value.boolVal; }
};
template <>
struct DispatchType<zt::Object> {
    static IDispatch* In(const VARIANT& value) { return value.pdispVal; }
    static IDispatch** Out(VARIANT& value) { return &value.pdispVal; }
};
template <>
struct DispatchType<zt::Value> {
    static const VARIANT& In(const VARIANT& value) { return value; }
    static VARIANT* Out(VARIANT& value) { return &value; }
};

template <typename Operation, typename Derived, typename... Types, std::size_t... Indices>
HRESULT CallOperation(Derived& self, const std::vector<const VARIANT*>& values, VARIANT& result,
                      std::tuple<Types...>*, std::index_sequence<Indices...>) {
    using Result = typename Operation::Result;
    if constexpr (Result::Type == VT_EMPTY) {
        return self.On(Operation{}, DispatchType<Types>::In(*values[Indices])...);
    } else {
        if constexpr (Result::Type != VT_VARIANT)
            result.vt = Result::Type;
        return self.On(Operation{}, DispatchType<Types>::In(*values[Indices])...,
                       DispatchType<Result>::Out(result));
    }
}

template <typename... Types>
std::vector<VARTYPE> ArgumentTypes(std::tuple<Types...>*) {
    return {Types::Type...};
}

// Performs the call when id and kind are the operation's.
template <typename Operation, typename Derived>
bool TryOperation(Derived& self, DispatchCall& call, HRESULT& outcome) {
    if (call.id != Operation::Id || (call.kind & Operation::Kind) == 0)
        return false;
    using Arguments = typename Operation::Arguments;
    auto* const types = static_cast<Arguments*>(nullptr);
    constexpr std::size_t Count = std::tuple_size_v<Arguments>;
    const DispatchArguments arguments(call, Operation::Kind, ArgumentTypes(types));
    outcome =
        PerformDispatch(self, Operation::Name, Operation::Id, Operation::Kind,
                        Operation::Result::Type, call, arguments, [&](VARIANT& result) {
                            return CallOperation<Operation>(self, arguments.Values(), result, types,
                                                            std::make_index_sequence<Count>());
                        });
    return true;
}

template <typename Derived, typename... Operations>
HRESULT InvokeAny(Derived& self, DispatchCall& call, std::tuple<Operations...>*) {
    HRESULT outcome = DISP_E_MEMBERNOTFOUND;
    if ((TryOperation<Operations>(self, call, outcome) || ...))
        return outcome;
    const DISPID listed[] = {Operations::Id...};
    return RefuseUnlisted(
        self, call, std::find(std::begin(listed), std::end(listed), call.id) != std::end(listed));
}

template <typename... Operations>
HRESULT FindAny(const wchar_t* name, DISPID* id, std::tuple<Operations...>*) {
    const bool found =
        ((IsDispatchName(name, Operations::Name) && ((*id = Operations::Id), true)) || ...);
    return found ? S_OK : DISP_E_UNKNOWNNAME;
}

} // namespace detail

// To be called from StandIn::InvokeDispatch of class Derived, which has a public
// `HRESULT On(Contract::Operation, arguments..., result*)` for each operation (result* left out
// where the operation has none; a BSTR, LONG, VARIANT_BOOL, IDispatch* or const VARIANT& for each
// argument). Argument counts and types that differ from the table's are refused. A DISPID that the
// table lacks ends the process; a listed one of another kind gives DISP_E_MEMBERNOTFOUND.
template <typename Contract, typename Derived>
HRESULT InvokeByContract(Derived& self, DISPID id, WORD kind, DISPPARAMS& parameters,
                         VARIANT* result, EXCEPINFO* exception) {
    DispatchCall call{id, kind, &parameters, result, exception};
    return detail::InvokeAny(self, call, static_cast<typename Contract::Operations*>(nullptr));
}

// To be called from StandIn::FindDispatchName. The names are the operations', with or without
// a leading "Get", "Put" or "PutRef", compared without regard to case.
template <typename Contract>
HRESULT FindByContract(const wchar_t* name, DISPID* id) {
    return detail::FindAny(name, id, static_cast<typename Contract::Operations*>(nullptr));
}

} // namespace devinst
