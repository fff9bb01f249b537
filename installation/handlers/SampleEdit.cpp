#include "installation/handlers/SampleEdit.h"

#include "installation/handlers/OpenProject.h"

namespace devinst {

namespace {

HRESULT Answer(VARIANT* result, VARIANT_BOOL state) {
    result->vt = VT_BOOL;
    result->boolVal = state;
    return S_OK;
}

HRESULT Answer(VARIANT* result, LONG number) {
    result->vt = VT_I4;
    result->lVal = number;
    return S_OK;
}

} // namespace

SampleEdit::SampleEdit() : StandIn("SampleEdit") {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, SampleEdit>());
}

HRESULT SampleEdit::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<SampleEditMethods>(name, id);
}

HRESULT SampleEdit::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                                   EXCEPINFO* exception) {
    return InvokeByContract<SampleEditMethods>(*this, id, kind, parameters, result, exception);
}

HRESULT SampleEdit::On(SampleEditMethods::Touch, IDispatch* kernel, VARIANT* result) {
    OpenProject(kernel).SetMetadata(L"EditedBy", L"KVDev.SampleEdit");
    return Answer(result, VARIANT_TRUE);
}

HRESULT SampleEdit::On(SampleEditMethods::Refuse, IDispatch*, VARIANT* result) {
    return Answer(result, VARIANT_FALSE);
}

HRESULT SampleEdit::On(SampleEditMethods::Nothing, IDispatch*, VARIANT*) {
    return S_OK;
}

HRESULT SampleEdit::On(SampleEditMethods::Raise, IDispatch*, VARIANT*) {
    throw ComFailure{E_FAIL, L"The sample handler raised this."};
}

HRESULT SampleEdit::On(SampleEditMethods::RaiseSilently, IDispatch*, VARIANT*) {
    throw ComFailure{E_FAIL, L""};
}

HRESULT SampleEdit::On(SampleEditMethods::Count, IDispatch*, VARIANT* result) {
    return Answer(result, LONG{1});
}

HRESULT SampleEdit::On(SampleEditMethods::Zero, IDispatch*, VARIANT* result) {
    return Answer(result, LONG{0});
}

} // namespace devinst
