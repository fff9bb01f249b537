#include "config/ProductInformation.h"

#include "support/Registry.h"
#include "config/ProductText.h"
#include "support/Text.h"

#include <windows.h>

#include <algorithm>
#include <vector>

namespace zt {

namespace {

// US English, Unicode.
constexpr wchar_t StringBlock[] = L"\\StringFileInfo\\040904b0\\";

std::vector<BYTE> VersionInformationOf(const std::wstring& path) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
    std::vector<BYTE> information(size);
    if (size == 0 || !GetFileVersionInfoW(path.c_str(), 0, size, information.data()))
        return {};
    return information;
}

} // namespace

void ProductInformation::SetProduct(const wchar_t* productName) {
    m_strProductName = WideText(productName);
    m_strExecutablePath = PathOfCommand(ReadRegistryText(
        HKEY_LOCAL_MACHINE, L"Software\\Morvenit\\ZeltorCompiler", L"InstallPathLite"));
}

std::wstring ProductInformation::GetVersionString(const wchar_t* key) const {
    const std::vector<BYTE> information = VersionInformationOf(m_strExecutablePath);
    void* text = nullptr;
    UINT length = 0; // with the terminator
    if (information.empty() ||
        !VerQueryValueW(information.data(), (std::wstring(StringBlock) + key).c_str(), &text,
                        &length) ||
        text == nullptr)
        return {};
    // The length is the resource's own word; the text must lie in what was read.
    const auto* first = static_cast<const wchar_t*>(text);
    const auto room = information.data() + information.size() - static_cast<const BYTE*>(text);
    const auto* last = first + std::min<std::size_t>(length, room / sizeof(wchar_t));
    return std::wstring(first, std::find(first, last, L'\0'));
}

std::wstring ProductInformation::GetFileVersion() const {
    return DottedVersion(GetVersionString(L"FileVersion"));
}

std::wstring ProductInformation::GetProductRegistryKey(bool omitVersion) const {
    return ProductKeyName(m_strProductName, omitVersion);
}

} // namespace zt
