// The kernel's host: answers its messages and its questions about the product.
#pragma once

#include "components/Installation.h"
#include "components/contracts/StatusDisplay.h"
#include "support/RunLog.h"

#include <windows.h>
#include <ocidl.h>
#include <oleidl.h>
#include <servprov.h>

namespace zt {

// Lives on the heap and frees itself with its last reference; the count starts at 0. For the main
// thread only: the count is a plain one.
class CStatusDispSite final : public IOKStatusDisplay,
                              public IOleClientSite,
                              public IServiceProvider {
  public:
    // log is borrowed and may be null; messages are then answered but not reported.
    explicit CStatusDispSite(RunLog* log) : m_log(log) {}

    ProductInformation& Product() { return m_product; }
    const ProductInformation& Product() const { return m_product; }

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    // IOKStatusDisplay
    HRESULT STDMETHODCALLTYPE Reserved1() override;
    HRESULT STDMETHODCALLTYPE Accepted2() override;
    HRESULT STDMETHODCALLTYPE Accepted3() override;
    HRESULT STDMETHODCALLTYPE Accepted4() override;
    HRESULT STDMETHODCALLTYPE ShowMessage(const wchar_t* text, LONG style, LONG* answer) override;
    HRESULT STDMETHODCALLTYPE Reserved6() override;
    HRESULT STDMETHODCALLTYPE Reserved7() override;
    HRESULT STDMETHODCALLTYPE Reserved8() override;
    HRESULT STDMETHODCALLTYPE GetProductVersion(BSTR* productVersion, BSTR* fileVersion) override;
    HRESULT STDMETHODCALLTYPE GetProductName(BSTR* productName) override;
    HRESULT STDMETHODCALLTYPE Reserved11() override;

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override;
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD assign, DWORD which, IMoniker** moniker) override;
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override;
    HRESULT STDMETHODCALLTYPE ShowObject() override;
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL show) override;
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override;

    // IServiceProvider
    HRESULT STDMETHODCALLTYPE QueryService(REFGUID service, REFIID iid, void** object) override;

  private:
    ~CStatusDispSite() = default;

    ULONG m_references = 0;
    ProductInformation m_product;
    RunLog* m_log;
};

} // namespace zt
