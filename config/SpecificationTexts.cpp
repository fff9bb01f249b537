#include "config/SpecificationTexts.h"

#include <algorithm>

namespace zt {

namespace {

// XML has no other control characters than tab, line feed and carriage return.
bool IsForbidden(wchar_t character) {
    return character < L' ' && character != L'\t' && character != L'\n' && character != L'\r';
}

std::optional<std::wstring> Literal(const std::wstring& text, wchar_t quote) {
    if (text.find(quote) != std::wstring::npos ||
        std::any_of(text.begin(), text.end(), IsForbidden))
        return std::nullopt;
    return quote + text + quote;
}

} // namespace

SpecificationPaths PathsOfSpecification(const std::wstring& dataFolder, const std::wstring& name) {
    const std::wstring folder = dataFolder + L"\\Morvenit\\KVProductFamily\\IPCCFG\\" + name;
    return {folder, folder + L".cfg"};
}

std::optional<std::wstring> LanguageCandidate(const std::wstring& folder,
                                              const std::wstring& language,
                                              const std::wstring& fileName) {
    if (language.empty() || fileName.find_first_of(L"*?") != std::wstring::npos)
        return std::nullopt;
    return folder + L"\\" + language + L"\\" + fileName;
}

std::wstring PlainCandidate(const std::wstring& folder, const std::wstring& fileName) {
    return folder + L"\\" + fileName;
}

std::wstring AxesCataloguePath(const std::wstring& dataFolder) {
    return dataFolder + L"\\Morvenit\\KVProductFamily\\Axes\\axes.xml";
}

std::optional<std::wstring> ConfigurationOfLanguage(const std::wstring& language) {
    const std::optional<std::wstring> literal = Literal(language, L'"');
    if (!literal)
        return std::nullopt;
    return L"//configuration[@lang=" + *literal + L"]";
}

std::optional<std::wstring> ModelFileOfAxes(const std::wstring& axesId) {
    const std::optional<std::wstring> literal = Literal(axesId, L'\'');
    if (!literal)
        return std::nullopt;
    return L"/models/axes[@id=" + *literal + L"]/vrmlfile";
}

} // namespace zt
