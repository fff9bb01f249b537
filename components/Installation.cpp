#include "components/Installation.h"

#include "components/InstallationTexts.h"
#include "support/Registry.h"

#include <windows.h>
#include <shlobj.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <vector>

namespace zt {

namespace {

// US English, Unicode.
constexpr wchar_t StringBlock[] = L"\\StringFileInfo\\040904b0\\";

struct ItemListFreer {
    void operator()(ITEMIDLIST* list) const { ILFree(list); }
};
using ItemList = std::unique_ptr<ITEMIDLIST, ItemListFreer>;

// The registry's data folder as it is stored, not expanded; an empty text is a folder like any
// other. None for a value that is missing, of another type, too long for a path or not terminated.
std::optional<std::wstring> StoredDataFolder() {
    const RegistryValue value =
        ReadRegistryValue(HKEY_LOCAL_MACHINE, L"Software\\Morvenit", L"ZeltorDataFolder");
    const std::size_t size = value.bytes.size();
    if ((value.type != REG_SZ && value.type != REG_EXPAND_SZ) ||
        size > MAX_PATH * sizeof(wchar_t) || size % sizeof(wchar_t) != 0)
        return std::nullopt;
    const std::wstring text = value.Text();
    if (size != 0 && text.back() != L'\0')
        return std::nullopt;
    return text.substr(0, text.find(L'\0'));
}

std::wstring CommonApplicationDataFolder() {
    ITEMIDLIST* found = nullptr;
    const HRESULT located = SHGetSpecialFolderLocation(nullptr, CSIDL_COMMON_APPDATA, &found);
    const ItemList list(found);
    wchar_t path[MAX_PATH] = {};
    if (FAILED(located) || list == nullptr || !SHGetPathFromIDListW(list.get(), path))
        return {};
    return path;
}

std::vector<BYTE> VersionInformationOf(const std::wstring& path) {
    DWORD ignored = 0;
    const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
    std::vector<BYTE> information(size);
    if (size == 0 || !GetFileVersionInfoW(path.c_str(), 0, size, information.data()))
        return {};
    return information;
}

} // namespace

std::wstring GetDataFolder() {
    const std::optional<std::wstring> stored = StoredDataFolder();
    return stored ? *stored : CommonApplicationDataFolder();
}

void ProductInformation::SetProduct(const SpecificationClassFacts& facts) {
    m_strProductName = facts.productName;
    m_strVersionKey = facts.versionKey;
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
    return ProductKeyName(m_strProductName, omitVersion ? std::wstring() : m_strVersionKey);
}

} // namespace zt
