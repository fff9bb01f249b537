#include "components/Variants.h"

#include "framework/Exceptions.h"

namespace zt {

namespace {

// Whether SafeArrayGetElement writes one BSTR of the caller's and reads at most two indices. The
// VARIANT's type alone does not tell: it is the component's word, the descriptor decides.
bool HoldsTexts(const SAFEARRAY* array) {
    return array != nullptr && array->cDims >= 1 && array->cDims <= 2 &&
           (array->fFeatures & FADF_BSTR) != 0 && array->cbElements == sizeof(BSTR);
}

} // namespace

void ClearVariant(VARIANT& value) {
    const HRESULT cleared = VariantClear(&value);
    if (FAILED(cleared))
        AfxThrowOleException(cleared);
}

bool ConvertVariant(VARIANT& value, VARTYPE type) {
    if (value.vt == VT_EMPTY || value.vt == VT_NULL)
        return false;
    const HRESULT converted = value.vt == type ? S_OK : VariantChangeType(&value, &value, 0, type);
    if (FAILED(converted))
        AfxThrowOleException(converted);
    return true;
}

_bstr_t TextElement(const VARIANT& array, LONG first, LONG second) {
    _bstr_t text;
    if (array.vt != (VT_ARRAY | VT_BSTR) || !HoldsTexts(array.parray))
        return text;
    LONG indices[] = {first, second};
    const HRESULT taken = SafeArrayGetElement(array.parray, indices, text.GetAddress());
    if (taken == E_OUTOFMEMORY)
        AfxThrowMemoryException();
    return text;
}

} // namespace zt
