#include "components/Texts.h"

#include "framework/Exceptions.h"

#include <limits>
#include <string>

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

} // namespace zt
