// What the machine's registry says of the installation: its data folder and its product.
#pragma once

#include "components/SpecificationClass.h"

#include <string>

namespace zt {

// The installation's data folder, below which the specifications and the axes catalogue lie: the
// registry's, or the folder for all users' application data where the registry names none.
std::wstring GetDataFolder();

// The installed product: its name, its executable's version resource and its registry keys.
class ProductInformation {
  public:
    // Stores the name of the product that works on the class's projects, and reads the
    // executable's path from the registry (empty when it is not there).
    void SetProduct(const SpecificationClassFacts& facts);

    // The string of that name ("FileVersion", "ProductVersion", "ProductName") in the executable's
    // version resource, in US English and Unicode; empty when there is none.
    std::wstring GetVersionString(const wchar_t* key) const;

    // The file version in dotted form.
    std::wstring GetFileVersion() const;

    // Name of the product's registry key, relative to the root.
    std::wstring GetProductRegistryKey(bool omitVersion) const;

  private:
    std::wstring m_strProductName;
    std::wstring m_strVersionKey;
    std::wstring m_strExecutablePath;
};

} // namespace zt
