#include "installation/runtime/FaultOutputs.h"

#include <string_view>

namespace devinst {

namespace {

VARIANT OfType(VARTYPE type) {
    VARIANT value = {};
    value.vt = type;
    return value;
}

VARIANT OfNumber(LONG number) {
    VARIANT value = OfType(VT_I4);
    value.lVal = number;
    return value;
}

VARIANT OfBool(bool state) {
    VARIANT value = OfType(VT_BOOL);
    value.boolVal = state ? VARIANT_TRUE : VARIANT_FALSE;
    return value;
}

VARIANT OfText(const std::wstring& text) {
    VARIANT value = OfType(VT_BSTR);
    value.bstrVal = SysAllocString(text.c_str());
    return value;
}

VARIANT OfError() {
    VARIANT value = OfType(VT_ERROR);
    value.scode = DISP_E_PARAMNOTFOUND;
    return value;
}

VARIANT OfArray(VARTYPE type, UINT dimensions, ULONG elements) {
    SAFEARRAYBOUND bounds[] = {{elements, 0}, {elements, 0}};
    VARIANT value = OfType(static_cast<VARTYPE>(VT_ARRAY | type));
    value.parray = SafeArrayCreate(type, dimensions, bounds);
    return value;
}

struct Form {
    const wchar_t* name;
    VARIANT (*make)();
};

const Form Forms[] = {
    {L"empty", [] { return OfType(VT_EMPTY); }},
    {L"null", [] { return OfType(VT_NULL); }},
    {L"i4", [] { return OfNumber(7); }},
    {L"bstr", [] { return OfText(L"text"); }},
    {L"error", [] { return OfError(); }},
    {L"true", [] { return OfBool(true); }},
    {L"false", [] { return OfBool(false); }},
    {L"no-object", [] { return OfType(VT_DISPATCH); }},
    {L"array-i4", [] { return OfArray(VT_I4, 2, 2); }},
    {L"array-bstr-1", [] { return OfArray(VT_BSTR, 1, 2); }},
    {L"array-bstr-2", [] { return OfArray(VT_BSTR, 2, 2); }},
    {L"array-bstr-2-empty", [] { return OfArray(VT_BSTR, 2, 0); }},
};

constexpr std::wstring_view TextForm = L"text ";

void FillVariant(VARIANT& value, VARTYPE type, const Fault& fault) {
    switch (fault.kind) {
    case FaultKind::Null:
        value.vt = type == VT_BSTR || type == VT_DISPATCH ? type : static_cast<VARTYPE>(VT_EMPTY);
        break;
    case FaultKind::Empty:
        if (type == VT_BSTR)
            value = OfText(L"");
        else if (type == VT_DISPATCH)
            value.vt = VT_DISPATCH;
        break;
    case FaultKind::Text:
        value = OfText(fault.text);
        break;
    default:
        MakeVariant(fault.text, value);
    }
}

} // namespace

void EmptyOutput(const Output& output) {
    if (output.place == nullptr)
        return;
    switch (output.kind) {
    case Output::Kind::Text:
        *static_cast<BSTR*>(output.place) = nullptr;
        break;
    case Output::Kind::Variant:
        // Not VariantInit, which leaves the value's bytes as they are.
        *static_cast<VARIANT*>(output.place) = {};
        break;
    case Output::Kind::Interface:
        *static_cast<IUnknown**>(output.place) = nullptr;
        break;
    case Output::Kind::Number:
        *static_cast<LONG*>(output.place) = 0;
        break;
    }
}

void DropOutput(const Output& output) {
    if (output.place == nullptr)
        return;
    if (output.kind == Output::Kind::Text)
        SysFreeString(*static_cast<BSTR*>(output.place));
    if (output.kind == Output::Kind::Variant)
        VariantClear(static_cast<VARIANT*>(output.place));
    if (output.kind == Output::Kind::Interface && *static_cast<IUnknown**>(output.place) != nullptr)
        (*static_cast<IUnknown**>(output.place))->Release();
    EmptyOutput(output);
}

void FillFaulty(const Output& output, const Fault& fault) {
    if (output.place == nullptr)
        return;
    if (output.kind == Output::Kind::Variant)
        FillVariant(*static_cast<VARIANT*>(output.place), output.type, fault);
    const bool givesText = fault.kind == FaultKind::Empty || fault.kind == FaultKind::Text;
    if (output.kind == Output::Kind::Text && givesText)
        *static_cast<BSTR*>(output.place) = SysAllocString(fault.text.c_str());
}

bool IsVariantForm(const std::wstring& form) {
    VARIANT value = {};
    const bool known = MakeVariant(form, value);
    VariantClear(&value);
    return known;
}

bool MakeVariant(const std::wstring& form, VARIANT& value) {
    if (form.starts_with(TextForm)) {
        value = OfText(form.substr(TextForm.size()));
        return true;
    }
    for (const Form& known : Forms) {
        if (form == known.name) {
            value = known.make();
            return true;
        }
    }
    return false;
}

} // namespace devinst
