#include "config/Configuration.h"

#include "config/XmlDocument.h"
#include "framework/String.h"
#include "support/Files.h"

namespace zt {

HRESULT ReadConfiguration(const wchar_t* path, KernelAdmin* kernel, _bstr_t& publicationLocation) {
    XmlDocument document;
    const HRESULT created = document.Create();
    if (FAILED(created))
        return created;
    if (!document.Load(path))
        throw CString(Exists(path) ? L"Invalid configuration file format: "
                                   : L"Configuration file does not exist: ") +
            path;

    _bstr_t projectsLocation;
    if (const XmlElement found = document.SelectSingle(L"configuration/proj-location"))
        projectsLocation = found.Text();
    if (const XmlElement found = document.SelectSingle(L"configuration/pub-location"))
        publicationLocation = found.Text();

    const HRESULT taken = KernelAdmin::SetProjectsLocation::Call(kernel, projectsLocation);
    if (FAILED(taken))
        throw L"Projects location cannot be set.";
    return taken;
}

} // namespace zt
