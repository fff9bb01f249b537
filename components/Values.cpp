#include "components/Values.h"

#include "framework/Exceptions.h"
#include "support/ComPtr.h"

#include <limits>

namespace zt {

namespace {

UINT CheckedLength(std::size_t length) {
    if (length > std::numeric_limits<INT>::max())
        AfxThrowMemoryException();
    return static_cast<UINT>(length);
}

_bstr_t TakeOver(BSTR text) {
    if (text == nullptr)
        AfxThrowMemoryException();
    return _bstr_t(text, false);
}

// Whether SafeArrayGetElement writes one BSTR of the caller's and reads at most two indices. The
// VARIANT's type alone does not prove it: the component sets it; the descriptor decides.
bool HoldsTexts(const SAFEARRAY* array) {
    return array != nullptr && array->cDims >= 1 && array->cDims <= 2 &&
           (array->fFeatures & FADF_BSTR) != 0 && array->cbElements == sizeof(BSTR);
}

} // namespace

_bstr_t MakeText(std::wstring_view text) {
    return TakeOver(SysAllocStringLen(text.data(), CheckedLength(text.size())));
}

_bstr_t MakeText(std::string_view text) {
    const int size = static_cast<int>(CheckedLength(text.size()));
    const int length = MultiByteToWideChar(CP_THREAD_ACP, 0, text.data(), size, nullptr, 0);
    _bstr_t wide = TakeOver(SysAllocStringLen(nullptr, static_cast<UINT>(length)));
    MultiByteToWideChar(CP_THREAD_ACP, 0, text.data(), size, Borrow(wide), length);
    return wide;
}

void ClearVariant(VARIANT& value) {
    const HRESULT cleared = VariantClear(&value);
    if (FAILED(cleared))
        AfxThrowOleException(cleared);
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

std::wstring TakeErrorInfo() {
    ComPtr<IErrorInfo> info;
    _bstr_t description;
    if (GetErrorInfo(0, info.GetAddressOf()) == S_OK && info)
        info->GetDescription(description.GetAddress());
    const wchar_t* const text = description;
    return text != nullptr ? text : L"";
}

void ClearErrorInfo() {
    SetErrorInfo(0, nullptr);
}

} // namespace zt
