#include "installation/publishing/Facts.h"

#include "components/ComponentIds.h"
#include "components/contracts/StatusDisplay.h"
#include "installation/model/Xml.h"
#include "installation/runtime/Call.h"

#include <comdef.h>
#include <servprov.h>
#include <wrl/client.h>

#include <filesystem>

namespace devinst {

namespace fs = std::filesystem;

std::wstring TextFrom(BSTR text) {
    return text != nullptr ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

std::wstring DescribeSpecification(const std::wstring& path) {
    const std::wstring name = fs::path(path).filename().wstring();
    if (!fs::is_regular_file(path))
        return name + L" (missing)";
    try {
        const XmlFile file = XmlFile::FromFile(path);
        const XmlElement version = Child(file.Root(), L"version");
        return name + L" (class " + Attribute(file.Root(), L"class") + L", version " +
               (version != nullptr ? TextOf(version) : L"unknown") + L")";
    } catch (const ComFailure&) {
        return name + L" (damaged)";
    }
}

std::wstring DescribeAxesModel(const std::wstring& path) {
    if (path.empty())
        return L"none";
    return fs::path(path).filename().wstring() +
           (fs::is_regular_file(path) ? L" (found)" : L" (missing)");
}

std::wstring DescribeAxesPosition(LONG position) {
    const auto bits = static_cast<DWORD>(position);
    return L"x " + std::to_wstring(bits & 0xffff) + L", y " + std::to_wstring(bits >> 16);
}

std::wstring DescribeSite(IUnknown* site) {
    ComPtr<IServiceProvider> services;
    ComPtr<zt::IOKStatusDisplay> display;
    if (site == nullptr || FAILED(site->QueryInterface(IID_PPV_ARGS(&services))) ||
        FAILED(services->QueryService(IID_IOKStatusDisplay, IID_IOKStatusDisplay,
                                      reinterpret_cast<void**>(display.GetAddressOf()))))
        return L"none";
    _bstr_t name;
    const HRESULT named = display->GetProductName(name.GetAddress());
    TraceCallback("GetProductName", {}, named, {Described(static_cast<const wchar_t*>(name))});
    return name.length() != 0 ? static_cast<const wchar_t*>(name) : L"nameless";
}

} // namespace devinst
