#include "installation/kernel/Host.h"

#include "components/ComponentIds.h"
#include "installation/runtime/Call.h"
#include "installation/runtime/Trace.h"

#include <comdef.h>

namespace devinst {

using Microsoft::WRL::ComPtr;

void Host::Set(IUnknown* site) {
    m_site = site;
    m_display.Reset();
    ComPtr<IServiceProvider> services;
    if (site == nullptr || FAILED(site->QueryInterface(IID_PPV_ARGS(&services))))
        return;
    const HRESULT found =
        services->QueryService(IID_IOKStatusDisplay, IID_IOKStatusDisplay,
                               reinterpret_cast<void**>(m_display.ReleaseAndGetAddressOf()));
    TraceCallback("QueryService", {"IOKStatusDisplay"}, found);
}

void Host::Show(const std::wstring& text, LONG style) {
    for (int i = 0; m_display != nullptr && i < RetryLimit; ++i) {
        LONG answer = 0;
        const HRESULT shown = m_display->ShowMessage(text.c_str(), style, &answer);
        TraceCallback("ShowMessage", {Described(text.c_str()), Described(style)}, shown,
                      {Described(answer)});
        if (answer != IDRETRY)
            return;
    }
}

void Host::AskForProduct() {
    if (m_display == nullptr)
        return;
    _bstr_t name;
    const HRESULT named = m_display->GetProductName(name.GetAddress());
    TraceCallback("GetProductName", {}, named, {Described(static_cast<const wchar_t*>(name))});
    _bstr_t productVersion;
    _bstr_t fileVersion;
    const HRESULT told =
        m_display->GetProductVersion(productVersion.GetAddress(), fileVersion.GetAddress());
    TraceCallback("GetProductVersion", {}, told,
                  {Described(static_cast<const wchar_t*>(productVersion)),
                   Described(static_cast<const wchar_t*>(fileVersion))});
}

} // namespace devinst
