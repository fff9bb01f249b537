#include "publish/ComponentSettings.h"

#include "components/Creation.h"
#include "support/Registry.h"
#include "project/StatusDispSite.h"
#include "publish/PropBag.h"

#include <ocidl.h>
#include <wrl/client.h>

namespace zt {

using Microsoft::WRL::ComPtr;

bool LoadSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName) {
    const auto persist = Query<IPersistPropertyBag>(component);
    if (!persist)
        return false;
    CPropBag bag(userRoot, defaultRoot, keyName, false);
    return bag.IsOpen() && SUCCEEDED(persist->Load(&bag, nullptr));
}

bool SaveSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName) {
    const auto persist = Query<IPersistPropertyBag>(component);
    if (!persist)
        return false;
    CPropBag bag(userRoot, defaultRoot, keyName, true);
    return bag.IsOpen() && SUCCEEDED(persist->Save(&bag, TRUE, TRUE));
}

void LoadProductSettings(IUnknown* component, const CStatusDispSite* statusSite,
                         const wchar_t* keyName) {
    if (statusSite == nullptr)
        return;
    const ProductInformation& product = statusSite->Product();
    const KeyHolder user =
        OpenRegistryKey(HKEY_CURRENT_USER, product.GetProductRegistryKey(false).c_str());
    if (user == nullptr)
        return;
    const KeyHolder machine =
        OpenRegistryKey(HKEY_LOCAL_MACHINE, product.GetProductRegistryKey(true).c_str());
    if (machine != nullptr)
        LoadSettings(component, user.get(), machine.get(), keyName);
}

} // namespace zt
