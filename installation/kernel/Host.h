// The kernel's host: the program's site, to which the kernel shows messages and which it asks for
// the product.
#pragma once

#include "components/contracts/StatusDisplay.h"

#include <windows.h>
#include <servprov.h>
#include <wrl/client.h>

#include <string>

namespace devinst {

class Host {
  public:
    // Asks the site (null: none) for its status display, as a service.
    void Set(IUnknown* site);

    IUnknown* Site() const { return m_site.Get(); }

    // Shows a message; a box with a retry button (retry/cancel) is shown again as long as the host
    // answers "retry", at most RetryLimit times.
    void Show(const std::wstring& text, LONG style);
    // Asks for the product's name and versions.
    void AskForProduct();

  private:
    static constexpr int RetryLimit = 100;

    Microsoft::WRL::ComPtr<IUnknown> m_site;
    Microsoft::WRL::ComPtr<zt::IOKStatusDisplay> m_display;
};

} // namespace devinst
