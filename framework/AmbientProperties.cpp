#include "framework/AmbientProperties.h"

#include <olectl.h>

namespace {

HRESULT Give(VARIANT* value, bool flag) {
    value->vt = VT_BOOL;
    value->boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT Give(VARIANT* value, DWORD number) {
    value->vt = VT_I4;
    value->lVal = static_cast<LONG>(number);
    return S_OK;
}

} // namespace

HRESULT ReadAmbientProperty(DISPID id, VARIANT* value) {
    switch (id) {
    case DISPID_AMBIENT_USERMODE:
        return Give(value, true);
    case DISPID_AMBIENT_UIDEAD:
    case DISPID_AMBIENT_MESSAGEREFLECT:
    case DISPID_AMBIENT_SHOWGRABHANDLES:
    case DISPID_AMBIENT_SHOWHATCHING:
    case DISPID_AMBIENT_DISPLAYASDEFAULT:
    case DISPID_AMBIENT_SUPPORTSMNEMONICS:
    case DISPID_AMBIENT_AUTOCLIP:
        return Give(value, false);
    case DISPID_AMBIENT_LOCALEID:
        return Give(value, DWORD{GetUserDefaultLCID()});
    case DISPID_AMBIENT_BACKCOLOR:
        return Give(value, DWORD{GetSysColor(COLOR_WINDOW)});
    case DISPID_AMBIENT_FORECOLOR:
        return Give(value, DWORD{GetSysColor(COLOR_WINDOWTEXT)});
    default:
        return DISP_E_MEMBERNOTFOUND;
    }
}
