#include "installation/runtime/DispatchArguments.h"

#include "installation/runtime/ResultCodes.h"
#include "installation/runtime/Trace.h"

#include <cwchar>
#include <string_view>

namespace devinst {

namespace {

const VARIANT& Followed(const VARIANT& value) {
    return value.vt == (VT_BYREF | VT_VARIANT) ? *value.pvarVal : value;
}

const char* KindText(WORD kind) {
    switch (kind) {
    case DISPATCH_PROPERTYGET:
        return "get";
    case DISPATCH_PROPERTYPUT:
        return "put";
    case DISPATCH_PROPERTYPUTREF:
        return "putref";
    default:
        return "method";
    }
}

bool NamesFit(const DISPPARAMS& parameters, WORD kind) {
    if ((kind & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) == 0)
        return parameters.cNamedArgs == 0;
    return parameters.cNamedArgs == 1 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
}

std::string KeyText(WORD kind, DISPID id) {
    return std::string("[") + KindText(kind) + " " + std::to_string(id) + "]";
}

} // namespace

DispatchArguments::DispatchArguments(const DispatchCall& call, WORD kind,
                                     const std::vector<VARTYPE>& types)
    : m_types(types) {
    const DISPPARAMS& parameters = *call.parameters;
    for (UINT i = parameters.cArgs; i > 0; --i)
        m_values.push_back(&Followed(parameters.rgvarg[i - 1]));
    if (m_values.size() != types.size()) {
        m_verdict = DISP_E_BADPARAMCOUNT;
        return;
    }
    if (!NamesFit(parameters, kind))
        m_verdict = DISP_E_NONAMEDARGS;
    for (std::size_t i = 0; i < types.size(); ++i) {
        if (types[i] != VT_VARIANT && m_values[i]->vt != types[i])
            m_verdict = DISP_E_TYPEMISMATCH;
    }
}

std::vector<std::string> DispatchArguments::Describe() const {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < m_values.size(); ++i) {
        const VARIANT& value = *m_values[i];
        const bool asTold = i < m_types.size() && m_types[i] == value.vt;
        if (asTold && value.vt == VT_BSTR)
            texts.push_back(Described(static_cast<const wchar_t*>(value.bstrVal)));
        else if (asTold && value.vt == VT_I4)
            texts.push_back(Described(value.lVal));
        else if (asTold && value.vt == VT_BOOL)
            texts.push_back(Described(value.boolVal));
        else if (asTold && value.vt == VT_DISPATCH)
            texts.push_back(LabelOf(value.pdispVal));
        else
            texts.push_back(Described(value));
    }
    return texts;
}

HRESULT PerformDispatch(const StandIn& self, const char* operation, DISPID id, WORD kind,
                        VARTYPE resultType, const DispatchCall& call,
                        const DispatchArguments& arguments,
                        const std::function<HRESULT(VARIANT& result)>& work) {
    const CallSite site(self, operation, KeyText(kind, id));
    VARIANT unwanted = {};
    VARIANT* const result = call.result != nullptr ? call.result : &unwanted;
    std::vector<Output> outputs;
    if (resultType != VT_EMPTY)
        outputs.push_back(Output::Variant(result, resultType));
    EXCEPINFO unheard = {};
    EXCEPINFO* const exception = call.exception != nullptr ? call.exception : &unheard;
    *exception = {};
    const HRESULT outcome = Perform(
        site, arguments.Describe(), outputs,
        [&] { return FAILED(arguments.Verdict()) ? arguments.Verdict() : work(*result); },
        exception);
    VariantClear(&unwanted);
    SysFreeString(unheard.bstrDescription);
    return outcome;
}

HRESULT RefuseUnlisted(const StandIn& self, const DispatchCall& call, bool idListed) {
    const std::string what =
        self.Label() + " Invoke [" + KindText(call.kind) + " " + std::to_string(call.id) + "]";
    // The default member, which any object may be asked for and need not have.
    const bool isDefault = call.id == DISPID_VALUE;
    if (!idListed && !isDefault)
        FailLoudly(what + ", which no table lists");
    TraceLine(what + " -> " + ResultText(DISP_E_MEMBERNOTFOUND));
    return DISP_E_MEMBERNOTFOUND;
}

bool IsDispatchName(const wchar_t* name, const char* operation) {
    const auto equals = [name](std::string_view text) {
        return _wcsicmp(name, std::wstring(text.begin(), text.end()).c_str()) == 0;
    };
    const std::string_view whole = operation;
    for (const std::string_view prefix : {"PutRef", "Put", "Get"}) {
        if (whole.starts_with(prefix) && equals(whole.substr(prefix.size())))
            return true;
    }
    return equals(whole);
}

} // namespace devinst
