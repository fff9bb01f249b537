#include "framework/String.h"

#include <utility>

CString::CString(const wchar_t* text) : m_text(text != nullptr ? text : L"") {}

CString::CString(std::wstring text) : m_text(std::move(text)) {}

CString& CString::operator+=(const wchar_t* text) {
    if (text != nullptr)
        m_text += text;
    return *this;
}
