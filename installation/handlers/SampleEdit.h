#pragma once

#include "installation/handlers/HandlerContracts.h"

namespace devinst {

// "KVDev.SampleEdit": an edit handler with a method for every way in which one can end.
class SampleEdit final : public StandIn {
  public:
    SampleEdit();

    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

    // Sets the open project's metadata item "EditedBy"; True.
    HRESULT On(SampleEditMethods::Touch, IDispatch* kernel, VARIANT* result);
    // False.
    HRESULT On(SampleEditMethods::Refuse, IDispatch* kernel, VARIANT* result);
    // No value.
    HRESULT On(SampleEditMethods::Nothing, IDispatch* kernel, VARIANT* result);
    // Fails with a description.
    HRESULT On(SampleEditMethods::Raise, IDispatch* kernel, VARIANT* result);
    // Fails without one.
    HRESULT On(SampleEditMethods::RaiseSilently, IDispatch* kernel, VARIANT* result);
    // The number 1.
    HRESULT On(SampleEditMethods::Count, IDispatch* kernel, VARIANT* result);
    // The number 0.
    HRESULT On(SampleEditMethods::Zero, IDispatch* kernel, VARIANT* result);

  private:
    ~SampleEdit() override = default;
};

} // namespace devinst
