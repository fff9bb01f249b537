#include "installation/model/InstallationSettings.h"

#include <windows.h>

#include <algorithm>
#include <string>

namespace devinst {

namespace {

std::wstring Setting(const wchar_t* name) {
    constexpr wchar_t Key[] = L"Software\\Morvenit\\DevelopmentInstallation";
    DWORD size = 0;
    if (RegGetValueW(HKEY_LOCAL_MACHINE, Key, name, RRF_RT_REG_SZ, nullptr, nullptr, &size) != 0)
        return {};
    std::wstring value(size / sizeof(wchar_t), L'\0');
    if (RegGetValueW(HKEY_LOCAL_MACHINE, Key, name, RRF_RT_REG_SZ, nullptr, value.data(), &size) !=
        0)
        return {};
    value.resize(std::min(value.find(L'\0'), value.size()));
    return value;
}

} // namespace

std::filesystem::path ConfigurationFilePath() {
    return Setting(L"ConfigurationFile");
}

std::filesystem::path WorkFolderPath() {
    return Setting(L"WorkFolder");
}

} // namespace devinst
