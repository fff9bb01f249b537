// CString: the framework's wide string, with the part of its contract that the program uses.
#pragma once

#include <string>
#include <utility>

class CString {
  public:
    CString() = default;
    // A null pointer gives the empty string.
    CString(const wchar_t* text) : m_text(text != nullptr ? text : L"") {}
    CString(std::wstring text) : m_text(std::move(text)) {}

    // The text with its terminating zero; valid until the string changes or goes.
    const wchar_t* GetString() const { return m_text.c_str(); }
    operator const wchar_t*() const { return GetString(); }
    // Length in UTF-16 units.
    int GetLength() const { return static_cast<int>(m_text.size()); }
    bool IsEmpty() const { return m_text.empty(); }

    CString& operator+=(const wchar_t* text) {
        if (text != nullptr)
            m_text += text;
        return *this;
    }
    friend CString operator+(CString left, const wchar_t* right) { return left += right; }

  private:
    std::wstring m_text;
};
