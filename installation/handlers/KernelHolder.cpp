#include "installation/handlers/KernelHolder.h"

namespace devinst {

KernelHolder::KernelHolder(const char* className) : StandIn(className) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, KernelHolder>());
}

HRESULT KernelHolder::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<KernelUser>(name, id);
}

HRESULT KernelHolder::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                                     EXCEPINFO* exception) {
    return InvokeByContract<KernelUser>(*this, id, kind, parameters, result, exception);
}

HRESULT KernelHolder::On(KernelUser::PutKernel, IDispatch* kernel) {
    m_kernel = kernel;
    return S_OK;
}

HRESULT KernelHolder::On(KernelUser::PutRefKernel, IDispatch* kernel) {
    m_kernel = kernel;
    return S_OK;
}

} // namespace devinst
