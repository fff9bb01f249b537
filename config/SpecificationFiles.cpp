#include "config/SpecificationFiles.h"

#include "config/SpecificationTexts.h"
#include "support/Files.h"
#include "support/Text.h"

#include <memory>
#include <string>
#include <type_traits>

namespace zt {

namespace {

struct LibraryUnloader {
    void operator()(HMODULE library) const { FreeLibrary(library); }
};
using Library = std::unique_ptr<std::remove_pointer_t<HMODULE>, LibraryUnloader>;

} // namespace

HRESULT SelectConfigurationElement(const std::wstring& language, const XmlDocument& document,
                                   XmlElement& element) {
    element = XmlElement();
    if (!language.empty())
        if (const std::optional<std::wstring> path = ConfigurationOfLanguage(language))
            element = document.SelectSingle(path->c_str());
    if (!element)
        element = document.SelectSingle(L"/configuration");
    return element ? S_OK : E_FAIL;
}

_bstr_t ResolveSpecificationFile(KernelAdmin* kernel, const std::wstring& language,
                                 const wchar_t* fileName) {
    _bstr_t folder;
    KernelAdmin::GetSpecificationFolder::Call(kernel, folder.GetAddress());
    const std::optional<std::wstring> inLanguage =
        LanguageCandidate(WideText(folder), language, WideText(fileName));
    if (inLanguage && Exists(inLanguage->c_str()))
        return _bstr_t(inLanguage->c_str());
    return _bstr_t(PlainCandidate(WideText(folder), WideText(fileName)).c_str());
}

bool SelfRegisterLibrary(const wchar_t* path) {
    const Library library(LoadLibraryW(path));
    if (library == nullptr)
        return false;
    using Registration = HRESULT(STDAPICALLTYPE*)();
    const auto registration = reinterpret_cast<Registration>(
        reinterpret_cast<void*>(GetProcAddress(library.get(), "DllRegisterServer")));
    return registration != nullptr && SUCCEEDED(registration());
}

} // namespace zt
