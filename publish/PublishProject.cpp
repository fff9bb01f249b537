#include "publish/PublishProject.h"

#include "publish/Package.h"
#include "publish/PublicationRules.h"
#include "publish/Routes.h"

namespace zt {

namespace {

void PublishInto(const Publication& publication, const std::wstring& destination) {
    switch (FactsOf(publication.specificationClass).route) {
    case PublishRoute::Exporter:
        return PublishThroughExporter(publication, destination);
    case PublishRoute::Text:
        return PublishThroughText(publication, destination);
    case PublishRoute::Viewer:
        return PublishThroughViewer(publication, destination);
    }
}

} // namespace

HRESULT Publish(const Publication& publication) {
    const std::wstring& folder = publication.exchangePath;
    const std::wstring destination = publication.isPackage
                                         ? TemporaryDestination()
                                         : PublishedFolder(folder, publication.projectName);
    PublishInto(publication, destination);
    publication.log.Log(L"Project published successfully\n");
    if (publication.isPackage) {
        PackFolder(destination, PackagePath(folder, publication.projectName));
        publication.log.Log(L"KVB file created sucessfully\n");
    }
    return S_OK;
}

} // namespace zt
