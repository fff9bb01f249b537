// Arguments of automation calls, checked against a contract.
#pragma once

#include "installation/runtime/Call.h"
#include "installation/runtime/StandIn.h"

#include <windows.h>
#include <oleauto.h>

#include <functional>
#include <string>
#include <vector>

namespace devinst {

struct DispatchCall {
    DISPID id;
    WORD kind;
    DISPPARAMS* parameters;
    VARIANT* result; // may be null
    EXCEPINFO* exception;
};

// The positional arguments in their written order, borrowed from the caller. References to variants
// (as scripts pass them) are followed.
class DispatchArguments {
  public:
    // types: as the contract has them; VT_VARIANT takes any.
    DispatchArguments(const DispatchCall& call, WORD kind, const std::vector<VARTYPE>& types);

    // S_OK, DISP_E_BADPARAMCOUNT, DISP_E_TYPEMISMATCH, or DISP_E_NONAMEDARGS for a name that the
    // kind of call does not take.
    HRESULT Verdict() const { return m_verdict; }
    const std::vector<const VARIANT*>& Values() const { return m_values; }
    std::vector<std::string> Describe() const;

  private:
    HRESULT m_verdict = S_OK;
    std::vector<const VARIANT*> m_values;
    std::vector<VARTYPE> m_types;
};

// Runs one operation of a contract under trace and fault plan, with the result of resultType going
// to the caller.
HRESULT PerformDispatch(const StandIn& self, const char* operation, DISPID id, WORD kind,
                        VARTYPE resultType, const DispatchCall& call,
                        const DispatchArguments& arguments,
                        const std::function<HRESULT(VARIANT& result)>& work);

// A call that fits no line of the contract: idListed tells whether its DISPID is there at all.
HRESULT RefuseUnlisted(const StandIn& self, const DispatchCall& call, bool idListed);

// Whether an operation of that name answers to name.
bool IsDispatchName(const wchar_t* name, const char* operation);

} // namespace devinst
