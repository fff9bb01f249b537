// Late-bound access to the installation's components: one wrapper for each contract.
#pragma once

#include "components/Contract.h"
#include "framework/OleDispatchDriver.h"
#include "support/ComPtr.h"

#include <comdef.h>

#include <array>
#include <tuple>
#include <utility>

namespace zt {

namespace detail {

// A call's result as its C++ type; empty where the component returned no value.
inline _bstr_t Take(Text, _variant_t value) {
    return value.vt == VT_BSTR ? _bstr_t(value.Detach().bstrVal, false) : _bstr_t();
}
inline ComPtr<IDispatch> Take(Object, _variant_t value) {
    return Adopt(value.vt == VT_DISPATCH ? value.Detach().pdispVal : nullptr);
}
inline _variant_t Take(Value, _variant_t value) {
    // Attached, not copied: the value may hold an array that the component has locked.
    return _variant_t(value.GetVARIANT(), false);
}
inline void Take(Nothing, _variant_t) {}

// The arguments of one call, in the order in which the contract lists them, lent to a component in
// the order of DISPPARAMS (last first).
template <typename... Types>
class ArgumentArray {
  public:
    explicit ArgumentArray(typename Types::Argument... values) : m_held(Types::Hold(values)...) {
        LendAll(std::index_sequence_for<Types...>());
    }
    std::span<VARIANTARG> Lent() { return m_lent; }

  private:
    template <std::size_t... At>
    void LendAll(std::index_sequence<At...>) {
        (LendOne<Types>(std::get<At>(m_held), m_lent[sizeof...(Types) - 1 - At]), ...);
    }
    template <typename Type>
    static void LendOne(const typename Type::Held& held, VARIANTARG& argument) {
        argument.vt = Type::Type;
        Type::Lend(held, argument);
    }

    std::tuple<typename Types::Held...> m_held;
    std::array<VARIANTARG, sizeof...(Types)> m_lent = {};
};

} // namespace detail

// An automation object that answers Contract (one of components/contracts). Holds its reference in
// the manner of COleDispatchDriver; a failing call raises as InvokeHelper does.
template <typename Contract>
class AutomationObject : public COleDispatchDriver {
  public:
    AutomationObject() = default;
    // Takes the reference over; null gives an empty wrapper, whose calls do nothing.
    explicit AutomationObject(ComPtr<IDispatch> object) : COleDispatchDriver(object.Detach()) {}

    void Attach(ComPtr<IDispatch> object) { AttachDispatch(object.Detach()); }
    explicit operator bool() const { return m_lpDispatch != nullptr; }

    // Calls one operation of the contract. Text gives a _bstr_t, Object a ComPtr<IDispatch>, Value
    // a _variant_t, Nothing none.
    template <typename Operation, typename... Values>
    auto Call(Values... values) {
        return CallWith<Operation>(static_cast<typename Operation::Arguments*>(nullptr), values...);
    }

  private:
    template <typename Operation, typename... Types>
    auto CallWith(std::tuple<Types...>*, typename Types::Argument... values) {
        using Result = typename Operation::Result;
        detail::ArgumentArray<Types...> arguments(values...);
        return detail::Take(
            Result(), InvokeHelper(Operation::Id, Operation::Kind, Result::Type, arguments.Lent()));
    }
};

} // namespace zt
