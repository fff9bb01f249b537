#include "framework/Exceptions.h"

#include <algorithm>
#include <cwchar>
#include <iterator>
#include <string>
#include <string_view>
#include <utility>

namespace {

BOOL CopyMessage(std::wstring_view message, wchar_t* buffer, UINT size, UINT* helpContext) {
    if (helpContext != nullptr)
        *helpContext = 0;
    if (buffer == nullptr || size == 0)
        return FALSE;
    const std::size_t length = std::min<std::size_t>(message.size(), size - 1);
    message.copy(buffer, length);
    buffer[length] = L'\0';
    return length != 0;
}

std::wstring SystemText(SCODE code) {
    wchar_t* text = nullptr;
    const DWORD length = FormatMessageW(
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS,
        nullptr, static_cast<DWORD>(code), 0, reinterpret_cast<wchar_t*>(&text), 0, nullptr);
    std::wstring result(text != nullptr ? text : L"", text != nullptr ? length : 0);
    LocalFree(text);
    const std::size_t last = result.find_last_not_of(L" \r\n");
    result.erase(last == std::wstring::npos ? 0 : last + 1);
    return result;
}

std::wstring MessageOfCode(SCODE code) {
    std::wstring text = SystemText(code);
    if (!text.empty())
        return text;
    wchar_t digits[16] = {};
    _snwprintf(digits, std::size(digits) - 1, L"0x%08lX", static_cast<unsigned long>(code));
    return digits;
}

} // namespace

BOOL CMemoryException::GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext) const {
    return CopyMessage(L"Out of memory.", buffer, size, helpContext);
}

BOOL COleException::GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext) const {
    return CopyMessage(MessageOfCode(m_sc), buffer, size, helpContext);
}

COleDispatchException::COleDispatchException(SCODE code, CString description)
    : COleException(code), m_strDescription(std::move(description)) {}

BOOL COleDispatchException::GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext) const {
    if (m_strDescription.IsEmpty())
        return COleException::GetErrorMessage(buffer, size, helpContext);
    return CopyMessage(m_strDescription.GetString(), buffer, size, helpContext);
}

ExceptionInfo::~ExceptionInfo() {
    SysFreeString(bstrSource);
    SysFreeString(bstrDescription);
    SysFreeString(bstrHelpFile);
}

void ExceptionInfo::Complete() {
    if (const auto fillIn = std::exchange(pfnDeferredFillIn, nullptr); fillIn != nullptr)
        fillIn(this);
}

void AfxThrowMemoryException() {
    throw new CMemoryException;
}

void AfxThrowOleException(SCODE code) {
    throw new COleException(code);
}

void AfxThrowOleDispatchException(ExceptionInfo& info) {
    info.Complete();
    const SCODE code = info.scode != 0 ? info.scode : DISP_E_EXCEPTION;
    throw new COleDispatchException(code, CString(info.bstrDescription));
}
