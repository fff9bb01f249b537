#include "installation/runtime/Call.h"

#include "installation/runtime/ResultCodes.h"
#include "installation/runtime/Trace.h"

#include <objidl.h>
#include <ocidl.h>
#include <oleidl.h>

namespace devinst {

namespace {

std::string Quoted(const std::wstring& text) {
    std::string result = "\"";
    for (const char c : ToUtf8(text)) {
        if (c == '"' || c == '\\')
            result += '\\';
        if (c == '\n')
            result += "\\n";
        else if (c == '\r')
            result += "\\r";
        else
            result += c;
    }
    return result + "\"";
}

struct NamedInterface {
    const IID& iid;
    const char* name;
};

std::string ArrayText(const VARIANT& value) {
    const UINT dimensions = value.parray != nullptr ? SafeArrayGetDim(value.parray) : 0;
    return "array(" + std::to_string(dimensions) + " of type " +
           std::to_string(value.vt & VT_TYPEMASK) + ")";
}

} // namespace

std::string Described(LONG value) {
    return std::to_string(value);
}

std::string Described(DWORD value) {
    return std::to_string(value);
}

std::string Described(VARIANT_BOOL value) {
    if (value == VARIANT_TRUE)
        return "true";
    return value == VARIANT_FALSE ? "false" : "bool " + std::to_string(value);
}

std::string Described(const wchar_t* text) {
    return text != nullptr ? Quoted(text) : "null";
}

std::string Described(const VARIANT& value) {
    if ((value.vt & VT_ARRAY) != 0)
        return ArrayText(value);
    switch (value.vt) {
    case VT_EMPTY:
        return "empty";
    case VT_NULL:
        return "VT_NULL";
    case VT_I2:
        return "VT_I2 " + std::to_string(value.iVal);
    case VT_I4:
        return "VT_I4 " + std::to_string(value.lVal);
    case VT_BOOL:
        return "VT_BOOL " + Described(value.boolVal);
    case VT_BSTR:
        return "VT_BSTR " + Described(static_cast<const wchar_t*>(value.bstrVal));
    case VT_DISPATCH:
        return "VT_DISPATCH " + LabelOf(value.pdispVal);
    case VT_UNKNOWN:
        return "VT_UNKNOWN " + LabelOf(value.punkVal);
    default:
        return "variant of type " + std::to_string(value.vt);
    }
}

std::string Described(REFIID iid) {
    const NamedInterface known[] = {
        {IID_IUnknown, "IUnknown"},
        {IID_IDispatch, "IDispatch"},
        {IID_IClassFactory, "IClassFactory"},
        {IID_IObjectWithSite, "IObjectWithSite"},
        {IID_IOleClientSite, "IOleClientSite"},
        {IID_IOleObject, "IOleObject"},
        {IID_IPersistPropertyBag, "IPersistPropertyBag"},
        {IID_IPersistStreamInit, "IPersistStreamInit"},
        {IID_IPersistStorage, "IPersistStorage"},
        {IID_IMarshal, "IMarshal"},
    };
    for (const NamedInterface& entry : known) {
        if (entry.iid == iid)
            return entry.name;
    }
    wchar_t text[64] = {};
    StringFromGUID2(iid, text, 64);
    return ToUtf8(text);
}

std::string Described(const void* pointer) {
    return LabelOf(pointer);
}

} // namespace devinst
