#include "installation/publishing/ViewerObjects.h"

namespace devinst {

ViewerObject::ViewerObject() : StandIn(Viewer::Name) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ViewerObject>());
}

HRESULT ViewerObject::On(Viewer::PutValidateNodes, const VARIANT& value) {
    if (value.vt != VT_I2)
        return DISP_E_TYPEMISMATCH;
    m_validateNodes = value.iVal;
    return S_OK;
}

HRESULT ViewerObject::On(Viewer::GetValidateNodes, VARIANT* value) {
    value->vt = VT_I2;
    value->iVal = m_validateNodes;
    return S_OK;
}

HRESULT ViewerObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<Viewer>(name, id);
}

HRESULT ViewerObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                                     EXCEPINFO* exception) {
    return InvokeByContract<Viewer>(*this, id, kind, parameters, result, exception);
}

ViewerControlObject::ViewerControlObject() : WindowedControl(zt::ViewerControl::Name) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ViewerControlObject>());
    AddControlFaces();
}

HRESULT ViewerControlObject::On(zt::ViewerControl::Viewer, IDispatch** viewer) {
    if (!IsInitialised())
        return E_UNEXPECTED;
    TraceWindows();
    *viewer = Ref<ViewerObject>(m_viewer).Detach<IDispatch>();
    return S_OK;
}

HRESULT ViewerControlObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<zt::ViewerControl>(name, id);
}

HRESULT ViewerControlObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                            VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<zt::ViewerControl>(*this, id, kind, parameters, result, exception);
}

} // namespace devinst
