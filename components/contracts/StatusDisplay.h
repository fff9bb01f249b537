// The interface through which the kernel reports to its host. The program implements it.
#pragma once

#include <windows.h>
#include <oleauto.h>

namespace zt {

// Interface IID_IOKStatusDisplay. What the kernel passes to the reserved and the accepted methods
// is not known; on x86-64 the caller clears its own arguments away, so that they can be left out.
struct IOKStatusDisplay : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE Reserved1() = 0;
    virtual HRESULT STDMETHODCALLTYPE Accepted2() = 0;
    virtual HRESULT STDMETHODCALLTYPE Accepted3() = 0;
    virtual HRESULT STDMETHODCALLTYPE Accepted4() = 0;
    // style: a message-box style (its low four bits are the type); answer: a message-box result.
    virtual HRESULT STDMETHODCALLTYPE ShowMessage(const wchar_t* text, LONG style,
                                                  LONG* answer) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved6() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved7() = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved8() = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProductVersion(BSTR* productVersion,
                                                        BSTR* fileVersion) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetProductName(BSTR* productName) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reserved11() = 0;
};

} // namespace zt
