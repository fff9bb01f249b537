// The framework's exceptions. They are thrown by pointer; whoever catches one ends it with Delete.
#pragma once

#include "framework/String.h"

#include <windows.h>
#include <oleauto.h>

class CException {
  public:
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;

    // Writes the message, cut to size - 1 characters and always terminated, into buffer. Returns
    // FALSE (and an empty text) when the exception has none. The help context is 0 where asked for.
    virtual BOOL GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext = nullptr) const = 0;
    void Delete() { delete this; }

  protected:
    CException() = default;
    virtual ~CException() = default;
};

class CMemoryException : public CException {
  public:
    BOOL GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext = nullptr) const override;
};

// A failing component call, with its result code.
class COleException : public CException {
  public:
    explicit COleException(SCODE code) : m_sc(code) {}

    // The system's text for the result code, without its closing line end; the code as eight
    // hexadecimal digits behind "0x" where the system has no text. Never empty.
    BOOL GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext = nullptr) const override;

    SCODE m_sc;
};

// A failure that an automation component reported with a description of its own. It is an OLE
// exception, so that one handler reports both.
class COleDispatchException : public COleException {
  public:
    COleDispatchException(SCODE code, CString description);

    // The component's description; without one, the message of the result code.
    BOOL GetErrorMessage(wchar_t* buffer, UINT size, UINT* helpContext = nullptr) const override;

    CString m_strDescription;
};

// Details of a failed Invoke (DISP_E_EXCEPTION); owns the strings in it.
struct ExceptionInfo : EXCEPINFO {
    ExceptionInfo() : EXCEPINFO{} {}
    ~ExceptionInfo();
    ExceptionInfo(const ExceptionInfo&) = delete;
    ExceptionInfo& operator=(const ExceptionInfo&) = delete;

    // Has the component fill in what it deferred.
    void Complete();
};

[[noreturn]] void AfxThrowMemoryException();
[[noreturn]] void AfxThrowOleException(SCODE code);
[[noreturn]] void AfxThrowOleDispatchException(ExceptionInfo& info);
