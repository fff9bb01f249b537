#include "installation/setup/Layout.h"
#include "installation/setup/SetupError.h"

#include <windows.h>

#include <string>

namespace devinst {

namespace {

struct Product {
    const wchar_t* name;
    const wchar_t* version;
    const wchar_t* component; // that publishes its projects
};

constexpr Product Products[] = {
    {L"ZeltorCatalog", L"1.4", L"Exporter"},     {L"ZeltorManual", L"1.4", L"KV3D"},
    {L"ZeltorLearning", L"1.4", L"KV3D"},        {L"ZeltorText", L"1.0", L"KV3D"},
    {L"ZeltorIllustrator", L"1.0", L"Exporter"},
};

void Check(LSTATUS status, const std::wstring& place) {
    if (status != ERROR_SUCCESS)
        ThrowSetupError("cannot write to the registry", place, static_cast<DWORD>(status));
}

void WriteValue(const std::wstring& key, const wchar_t* name, DWORD type, const void* data,
                std::size_t size) {
    Check(RegSetKeyValueW(HKEY_LOCAL_MACHINE, key.c_str(), name, type, data,
                          static_cast<DWORD>(size)),
          key + L"\\" + name);
}

void WriteDefaults(const std::wstring& key) {
    constexpr wchar_t Footer[] = L"Published by the development installation";
    constexpr wchar_t Scale[] = L"1.25";
    constexpr DWORD Yes = 0xFFFFFFFF;
    WriteValue(key, L"Footer", REG_SZ, Footer, sizeof(Footer));
    WriteValue(key, L"Scale", REG_SZ, Scale, sizeof(Scale));
    WriteValue(key, L"ShowDocuments", REG_DWORD, &Yes, sizeof(Yes));
}

void MakeUserKey(const std::wstring& path) {
    HKEY key = nullptr;
    Check(RegCreateKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                          KEY_READ, nullptr, &key, nullptr),
          path);
    RegCloseKey(key);
}

} // namespace

void WriteProductSettings() {
    for (const Product& product : Products) {
        const std::wstring key = std::wstring(L"Software\\Morvenit\\") + product.name;
        WriteDefaults(key + L"\\Components\\" + product.component);
        MakeUserKey(key + L"\\" + product.version);
    }
}

} // namespace devinst
