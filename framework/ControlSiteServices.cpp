// What the container does for its controls beside their place: the control site and the ambient
// properties.
#include "framework/AmbientProperties.h"
#include "framework/ControlPlace.h"
#include "framework/ControlSite.h"

#include <cmath>

namespace {

LONG ToHimetric(float pixels, LONG perInch) {
    return PixelsToHimetric(static_cast<LONG>(std::lround(pixels)), perInch);
}

} // namespace

HRESULT ControlSite::OnControlInfoChanged() {
    return S_OK;
}

// Nothing but the container's own end deactivates the control.
HRESULT ControlSite::LockInPlaceActive(BOOL) {
    return S_OK;
}

HRESULT ControlSite::GetExtendedControl(IDispatch** control) {
    if (control != nullptr)
        *control = nullptr;
    return E_NOTIMPL;
}

// The container counts in pixels, positions and sizes alike.
HRESULT ControlSite::TransformCoords(POINTL* himetric, POINTF* container, DWORD flags) {
    if (himetric == nullptr || container == nullptr)
        return E_POINTER;
    const PixelScale scale = ScreenScale();
    if ((flags & XFORMCOORDS_HIMETRICTOCONTAINER) != 0) {
        container->x = static_cast<float>(HimetricToPixels(himetric->x, scale.perInchX));
        container->y = static_cast<float>(HimetricToPixels(himetric->y, scale.perInchY));
        return S_OK;
    }
    if ((flags & XFORMCOORDS_CONTAINERTOHIMETRIC) != 0) {
        himetric->x = ToHimetric(container->x, scale.perInchX);
        himetric->y = ToHimetric(container->y, scale.perInchY);
        return S_OK;
    }
    return E_INVALIDARG;
}

HRESULT ControlSite::TranslateAccelerator(MSG*, DWORD) {
    return S_FALSE;
}

HRESULT ControlSite::OnFocus(BOOL) {
    return S_OK;
}

HRESULT ControlSite::ShowPropertyFrame() {
    return E_NOTIMPL;
}

HRESULT ControlSite::GetTypeInfoCount(UINT* count) {
    if (count == nullptr)
        return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT ControlSite::GetTypeInfo(UINT, LCID, ITypeInfo** info) {
    if (info != nullptr)
        *info = nullptr;
    return E_NOTIMPL;
}

// Ambient properties are known by their identifiers.
HRESULT ControlSite::GetIDsOfNames(REFIID, LPOLESTR*, UINT count, LCID, DISPID* ids) {
    for (UINT i = 0; ids != nullptr && i < count; ++i)
        ids[i] = DISPID_UNKNOWN;
    return DISP_E_UNKNOWNNAME;
}

HRESULT ControlSite::Invoke(DISPID id, REFIID iid, LCID, WORD kind, DISPPARAMS* parameters,
                            VARIANT* result, EXCEPINFO*, UINT*) {
    if (iid != IID_NULL)
        return DISP_E_UNKNOWNINTERFACE;
    if ((kind & DISPATCH_PROPERTYGET) == 0)
        return DISP_E_MEMBERNOTFOUND;
    if (parameters != nullptr && parameters->cArgs != 0)
        return DISP_E_BADPARAMCOUNT;
    VARIANT value = {};
    const HRESULT read = ReadAmbientProperty(id, &value);
    if (SUCCEEDED(read) && result != nullptr)
        *result = value;
    return read;
}
