// What the container does for its controls beside their place: the control site and the ambient
// properties.
#include "framework/ControlSite.h"

#include <olectl.h>

#include <cmath>

namespace {

LONG ToHimetric(float pixels, LONG perInch) {
    return PixelsToHimetric(static_cast<LONG>(std::lround(pixels)), perInch);
}

HRESULT SetValue(VARIANT* value, bool flag) {
    value->vt = VT_BOOL;
    value->boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT SetValue(VARIANT* value, DWORD number) {
    value->vt = VT_I4;
    value->lVal = static_cast<LONG>(number);
    return S_OK;
}

// Reads one of the properties that a container keeps for all its controls, by its standard
// identifier: a control at run time, in the user's language and the system's window colours, with
// none of a designer's marks. value must be empty. DISP_E_MEMBERNOTFOUND for a property that the
// container does not keep.
HRESULT ReadAmbientProperty(DISPID id, VARIANT* value) {
    switch (id) {
    case DISPID_AMBIENT_USERMODE:
        return SetValue(value, true);
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_MESSAGEREFLECT:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
    case DISPID_AMBIENT_AUTOCLIP:
        return SetValue(value, false);
    case DISPID_AMBIENT_LOCALEID:
        return SetValue(value, DWORD{GetUserDefaultLCID()});
    case DISPID_AMBIENT_BACKCOLOR:
        return SetValue(value, DWORD{GetSysColor(COLOR_WINDOW)});
    case DISPID_AMBIENT_FORECOLOR:
        return SetValue(value, DWORD{GetSysColor(COLOR_WINDOWTEXT)});
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}

} // namespace

PixelScale ScreenScale() {
    constexpr LONG usual = 96;
    const HDC screen = GetDC(nullptr);
    if (screen == nullptr)
        return {usual, usual};
    const LONG x = GetDeviceCaps(screen, LOGPIXELSX);
    const LONG y = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return {x > 0 ? x : usual, y > 0 ? y : usual};
}

LONG PixelsToHimetric(LONG pixels, LONG pixelsPerInch) {
    return MulDiv(pixels, HimetricPerInch, pixelsPerInch);
}

LONG HimetricToPixels(LONG length, LONG pixelsPerInch) {
    return MulDiv(length, pixelsPerInch, HimetricPerInch);
}

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
