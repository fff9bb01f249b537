// Loading and saving of a component's settings through a CPropBag.
#pragma once

#include <windows.h>
#include <unknwn.h>

namespace zt {

class CStatusDispSite;

// Has the component (one with IPersistPropertyBag) load itself from its subkey below the two roots.
// Returns whether it did.
bool LoadSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName);

// Has the component save itself below the user's root, with all its properties.
bool SaveSettings(IUnknown* component, HKEY userRoot, HKEY defaultRoot, const wchar_t* keyName);

// Has the component load itself from the keys of the site's product: the user's and, for defaults,
// the machine's. Where either is missing nothing is loaded; nothing is reported.
void LoadProductSettings(IUnknown* component, const CStatusDispSite* statusSite,
                         const wchar_t* keyName);

} // namespace zt
