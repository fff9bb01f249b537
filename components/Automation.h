// Late-bound access to the installation's components: one wrapper for each contract.
#pragma once

#include "components/Contract.h"
#include "components/Values.h"
#include "support/ComPtr.h"

#include <comdef.h>
#include <wrl/client.h>

namespace zt {

using Microsoft::WRL::ComPtr;

namespace detail {

// A call's result, handed to the caller as the type that stands for it. A component that succeeds
// and hands over nothing gives an empty one.
inline _bstr_t Take(Text, _variant_t& value) {
    return ConvertVariant(value, VT_BSTR) ? _bstr_t(value.Detach().bstrVal, false) : _bstr_t();
}
inline ComPtr<IDispatch> Take(Object, _variant_t& value) {
    return Adopt(ConvertVariant(value, VT_DISPATCH) ? value.Detach().pdispVal : nullptr);
}
inline _variant_t Take(Value, _variant_t& value) {
    return _variant_t(value.GetVARIANT(), false);
}

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
            _variant_t result;
            InvokeHelper(Operation::Id, Operation::Kind, VT_VARIANT, static_cast<VARIANT*>(&result),
                         Operation::Codes, values...);
            return detail::Take(Result(), result);
        }
    }
};

} // namespace zt
