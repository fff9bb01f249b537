#include "publish/PublishProject.h"

#include "app/ZTInvisible.h"
#include "publish/Destination.h"
#include "publish/Package.h"
#include "publish/PublicationRules.h"
#include "publish/Routes.h"

#include <string>

namespace zt {

namespace {

void PublishInto(CZTInvisible& app, const std::wstring& projectName,
                 const std::wstring& destination) {
    switch (FactsOf(app.m_specificationClass).route) {
    case PublishRoute::Exporter:
        return PublishThroughExporter(app, destination);
    case PublishRoute::Text:
        return PublishThroughText(app, projectName, destination);
    case PublishRoute::Viewer:
        return PublishThroughViewer(app, projectName, destination);
    }
}

} // namespace

HRESULT PublishProject(CZTInvisible& app, const wchar_t* projectName) {
    const std::wstring destination = app.m_bPackage
                                         ? TemporaryDestination()
                                         : PublishedFolder(app.m_strExchangePath, projectName);
    PublishInto(app, projectName, destination);
    app.Log(L"Project published successfully\n");
    if (app.m_bPackage) {
        PackFolder(destination, PackagePath(app.m_strExchangePath, projectName));
        app.Log(L"KVB file created sucessfully\n");
    }
    return S_OK;
}

} // namespace zt
