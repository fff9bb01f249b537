// The installed product: its name, its executable's version resource and its registry keys.
#pragma once

#include <string>

namespace zt {

class ProductInformation {
  public:
    // Stores the product's name and reads the executable's path from the registry (empty when it
    // is not there).
    void SetProduct(const wchar_t* productName);

    // The string of that name ("FileVersion", "ProductVersion", "ProductName") in the executable's
    // version resource, in US English and Unicode; empty when there is none.
    std::wstring GetVersionString(const wchar_t* key) const;

    // The file version in dotted form.
    std::wstring GetFileVersion() const;

    // Name of the product's registry key, relative to the root.
    std::wstring GetProductRegistryKey(bool omitVersion) const;

  private:
    std::wstring m_strProductName;
    std::wstring m_strExecutablePath;
};

} // namespace zt
