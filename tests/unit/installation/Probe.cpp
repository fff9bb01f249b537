#include "tests/unit/installation/Probe.h"

namespace devinst::test {

Probe::Probe() : StandIn("Probe") {
    AddFace(ProbeId, FunctionTable<ProbeInterface, Probe>());
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, Probe>());
}

HRESULT Probe::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<ProbeAutomation>(name, id);
}

HRESULT Probe::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                              EXCEPINFO* exception) {
    return InvokeByContract<ProbeAutomation>(*this, id, kind, parameters, result, exception);
}

HRESULT Probe::On(ProbeInterface::GiveText, LONG number, BSTR* text) {
    *text = SysAllocString((L"text " + std::to_wstring(number)).c_str());
    return S_OK;
}

HRESULT Probe::On(ProbeInterface::GiveVariant, VARIANT* value) {
    value->vt = VT_I4;
    value->lVal = 42;
    return S_OK;
}

HRESULT Probe::On(ProbeInterface::GiveObject, ProbeInterface** object) {
    *object = static_cast<ProbeInterface*>((new Probe)->Identity());
    return S_OK;
}

HRESULT Probe::On(ProbeAutomation::GetTitle, BSTR* text) {
    *text = SysAllocString(title.c_str());
    return S_OK;
}

HRESULT Probe::On(ProbeAutomation::PutTitle, BSTR text) {
    title = text;
    return S_OK;
}

HRESULT Probe::On(ProbeAutomation::Combine, BSTR text, LONG number, VARIANT_BOOL state,
                  BSTR* result) {
    const std::wstring combined = std::wstring(text) + L" " + std::to_wstring(number) +
                                  (state == VARIANT_TRUE ? L" true" : L" false");
    *result = SysAllocString(combined.c_str());
    return S_OK;
}

HRESULT Probe::On(ProbeAutomation::Child, IDispatch** child) {
    *child = static_cast<IDispatch*>((new Probe)->Identity());
    return S_OK;
}

HRESULT Probe::On(ProbeAutomation::Anything, const VARIANT& value, VARIANT* result) {
    return VariantCopy(result, const_cast<VARIANT*>(&value));
}

} // namespace devinst::test
