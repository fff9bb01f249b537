// Late-bound access to the installation's components: one wrapper for each contract.
#pragma once

#include "components/Contract.h"

#include <comdef.h>
#include <wrl/client.h>

namespace zt {

using Microsoft::WRL::ComPtr;

namespace detail {

// How the result of an automation call is held.
template <typename Result>
struct ResultHolder;

template <>
struct ResultHolder<Text> {
    BSTR value = nullptr;
    _bstr_t Take() { return _bstr_t(value, false); }
};
template <>
struct ResultHolder<Object> {
    IDispatch* value = nullptr;
    ComPtr<IDispatch> Take() {
        ComPtr<IDispatch> object;
        object.Attach(value);
        return object;
    }
};
template <>
struct ResultHolder<Value> {
    VARIANT value = {};
    _variant_t Take() { return _variant_t(value, false); }
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
        if constexpr (Result::Type == VT_EMPTY) {
            InvokeHelper(Operation::Id, Operation::Kind, VT_EMPTY, nullptr, Operation::Codes,
                         values...);
        } else {
            detail::ResultHolder<Result> result;
            InvokeHelper(Operation::Id, Operation::Kind, Result::Type, &result.value,
                         Operation::Codes, values...);
            return result.Take();
        }
    }
};

} // namespace zt
