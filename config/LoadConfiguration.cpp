#include "config/LoadConfiguration.h"

#include "app/ZTInvisible.h"
#include "support/Files.h"
#include "config/XmlDocument.h"
#include "framework/String.h"

namespace zt {

HRESULT LoadConfiguration(CZTInvisible& app, const wchar_t* configFilePath) {
    XmlDocument document;
    const HRESULT created = document.Create();
    if (FAILED(created))
        return created;
    if (!document.Load(configFilePath))
        throw CString(Exists(configFilePath) ? L"Invalid configuration file format: "
                                             : L"Configuration file does not exist: ") +
            configFilePath;

    _bstr_t projectsLocation;
    if (const XmlElement found = document.SelectSingle(L"configuration/proj-location"))
        projectsLocation = found.Text();
    if (const XmlElement found = document.SelectSingle(L"configuration/pub-location"))
        app.m_bstrPublicationLocation = found.Text();

    const HRESULT taken =
        KernelAdmin::SetProjectsLocation::Call(app.m_pKernelAdmin.Get(), projectsLocation);
    if (FAILED(taken))
        throw L"Projects location cannot be set.";
    return taken;
}

} // namespace zt
