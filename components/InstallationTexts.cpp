#include "components/InstallationTexts.h"

namespace zt {

std::wstring DottedVersion(const std::wstring& version) {
    std::wstring dotted;
    for (const wchar_t character : version)
        if (character != L' ')
            dotted += character == L',' ? L'.' : character;
    return dotted;
}

std::wstring PathOfCommand(const std::wstring& command) {
    if (command.empty() || command.front() != L'"')
        return command;
    const std::size_t lastQuote = command.rfind(L'"');
    return lastQuote == 0 ? std::wstring() : command.substr(1, lastQuote - 1);
}

std::wstring ProductKeyName(const std::wstring& productName, const std::wstring& version) {
    const std::wstring name = L"Software\\Morvenit\\" + productName;
    return version.empty() ? name : name + L"\\" + version;
}

} // namespace zt
