#include "installation/publishing/PublicationSettings.h"

#include "installation/runtime/Call.h"

#include <comdef.h>

#include <cwctype>

namespace devinst {

namespace {

// The property as the type that is asked for; VT_EMPTY where the bag has none of that type.
_variant_t ReadProperty(IPropertyBag* bag, const wchar_t* name, VARTYPE type) {
    _variant_t value;
    value.vt = type;
    const HRESULT read = bag->Read(name, &value, nullptr);
    TraceCallback("Read", {Described(name), "type " + std::to_string(type)}, read,
                  {SUCCEEDED(read) ? Described(static_cast<const VARIANT&>(value)) : "nothing"});
    return SUCCEEDED(read) && value.vt == type ? value : _variant_t();
}

std::wstring TextIn(const _variant_t& value) {
    return value.bstrVal != nullptr ? value.bstrVal : L"";
}

bool IsColour(const std::wstring& text) {
    if (text.size() != 7 || text[0] != L'#')
        return false;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] > 0x7f || !std::iswxdigit(text[i]))
            return false;
    }
    return true;
}

HRESULT WriteProperty(IPropertyBag* bag, const wchar_t* name, _variant_t value) {
    const HRESULT written = bag->Write(name, &value);
    TraceCallback("Write", {Described(name), Described(static_cast<const VARIANT&>(value))},
                  written);
    return written;
}

} // namespace

void PublicationSettings::Load(IPropertyBag* bag) {
    if (const _variant_t value = ReadProperty(bag, L"Accent", VT_BSTR);
        value.vt == VT_BSTR && IsColour(TextIn(value)))
        accent = TextIn(value);
    if (const _variant_t value = ReadProperty(bag, L"Footer", VT_BSTR); value.vt == VT_BSTR)
        footer = TextIn(value);
    if (const _variant_t value = ReadProperty(bag, L"ShowDocuments", VT_BOOL); value.vt == VT_BOOL)
        showDocuments = value.boolVal != VARIANT_FALSE;
    if (const _variant_t value = ReadProperty(bag, L"TableRows", VT_I4);
        value.vt == VT_I4 && value.lVal > 0)
        tableRows = value.lVal;
    if (const _variant_t value = ReadProperty(bag, L"Scale", VT_R8);
        value.vt == VT_R8 && value.dblVal > 0 && value.dblVal <= 100)
        scale = value.dblVal;
}

HRESULT PublicationSettings::Save(IPropertyBag* bag) const {
    const HRESULT results[] = {
        WriteProperty(bag, L"Accent", accent.c_str()),
        WriteProperty(bag, L"Footer", footer.c_str()),
        WriteProperty(bag, L"ShowDocuments", showDocuments),
        WriteProperty(bag, L"TableRows", _variant_t(tableRows, VT_I4)),
        WriteProperty(bag, L"Scale", _variant_t(scale, VT_R8)),
    };
    for (const HRESULT result : results) {
        if (FAILED(result))
            return result;
    }
    return S_OK;
}

} // namespace devinst
