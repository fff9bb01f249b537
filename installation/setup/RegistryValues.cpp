#include "installation/setup/Layout.h"
#include "installation/setup/SetupError.h"

#include <windows.h>

namespace devinst {

namespace fs = std::filesystem;

namespace {

void WriteText(const wchar_t* key, const wchar_t* name, const std::wstring& value) {
    const LSTATUS status =
        RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, REG_SZ, value.c_str(),
                        static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t)));
    if (status != ERROR_SUCCESS)
        ThrowSetupError("cannot write the registry value", std::wstring(key) + L"\\" + name,
                        static_cast<DWORD>(status));
}

} // namespace

void WriteRegistry(const fs::path& root) {
    const std::wstring product = L"\"" + (root / L"product" / L"ZTProduct.exe").wstring() + L"\"";
    constexpr wchar_t Own[] = L"Software\\Morvenit\\DevelopmentInstallation";
    WriteText(L"Software\\Morvenit", L"ZeltorDataFolder", root / L"data");
    WriteText(L"Software\\Morvenit\\ZeltorCompiler", L"InstallPathLite", product + L" /lite");
    WriteText(L"Software\\Morvenit\\CMSTC", L"ExchangePath", root / L"exchange");
    WriteText(Own, L"ConfigurationFile", root / L"configuration.xml");
    WriteText(Own, L"WorkFolder", root / L"work");
}

} // namespace devinst
