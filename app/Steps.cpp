#include "cms/TcpMessageClient.h"

#include "app/Steps.h"

#include "app/ZTInvisible.h"
#include "cms/Notification.h"
#include "components/Installation.h"
#include "config/Configuration.h"
#include "config/Specification.h"
#include "project/Pipeline.h"
#include "project/UpdateProjectDocument.h"
#include "publish/PublishProject.h"
#include "support/Output.h"

namespace zt {

namespace {

// The pipeline's services for the one run of the application object.
class StepsOfRun final : public PipelineServices {
  public:
    explicit StepsOfRun(CZTInvisible& app) : m_app(app) {}

    HRESULT LoadConfiguration(const wchar_t* configFilePath) override {
        return zt::LoadConfiguration(m_app, configFilePath);
    }
    bool LoadSpecification(const wchar_t* specName, const wchar_t* requiredVersion) override {
        return zt::LoadSpecification(m_app, specName, requiredVersion);
    }
    bool UpdateProjectDocument() override { return zt::UpdateProjectDocument(m_app); }
    HRESULT PublishProject(const wchar_t* projectName) override {
        return zt::PublishProject(m_app, projectName);
    }

  private:
    CZTInvisible& m_app;
};

} // namespace

void ProcessProject(CZTInvisible& app, const wchar_t* projectName, const wchar_t* documentPath,
                    const wchar_t* editProgId, const wchar_t* editMethod,
                    const MetadataMap& metadata, const wchar_t* newProjectName) {
    const ProjectRequest request = {.exchangePath = app.m_strExchangePath,
                                    .projectName = projectName,
                                    .metadata = metadata,
                                    .newProjectName = newProjectName,
                                    .editProgId = editProgId,
                                    .editMethod = editMethod,
                                    .documentPath = documentPath,
                                    .updateDocument = app.m_bUpdateDoc,
                                    .newRevision = app.m_bNewRevision,
                                    .publish = app.m_bPublish};
    const ProjectRun run = {.log = app,
                            .statusSite = app.m_pStatusSite,
                            .kernel = app.m_pKernelAdmin,
                            .project = app.m_pKernelProject,
                            .configuration = app.m_configuration,
                            .importedProjectId = app.m_bstrImportedProjectId,
                            .documentFolder = app.m_strDocumentFolder,
                            .language = app.m_bstrLanguage,
                            .documentHandler = app.m_bstrDocumentHandler,
                            .specificationClass = app.m_specificationClass};
    StepsOfRun services(app);
    RunPipeline(request, run, services);
}

HRESULT LoadConfiguration(CZTInvisible& app, const wchar_t* configFilePath) {
    return ReadConfiguration(configFilePath, app.m_pKernelAdmin.Get(),
                             app.m_bstrPublicationLocation);
}

bool LoadSpecification(CZTInvisible& app, const wchar_t* specName, const wchar_t* requiredVersion) {
    return ReadSpecification({.kernel = app.m_pKernelAdmin.Get(),
                              .log = app,
                              .language = app.m_bstrLanguage,
                              .specificationClass = app.m_specificationClass,
                              .documentHandler = app.m_bstrDocumentHandler,
                              .sequenceNumberHandler = app.m_pSequenceNumberHandler,
                              .notificationHandler = app.m_pNotificationHandler,
                              .exportHandler = app.m_pExportHandler,
                              .axesModelPath = app.m_bstrAxesModelPath,
                              .axesPosition = app.m_axesPosition},
                             specName, requiredVersion);
}

bool UpdateProjectDocument(CZTInvisible& app) {
    return UpdateDocument(app.m_pKernelAdmin.Get(), app.m_pKernelProject.Get(),
                          app.m_bstrDocumentHandler, app.m_bNewRevision, app);
}

HRESULT PublishProject(CZTInvisible& app, const wchar_t* projectName) {
    const ProductInformation& product = app.m_pStatusSite->Product();
    return Publish({.kernel = app.m_pKernelAdmin.Get(),
                    .project = app.m_pKernelProject.Get(),
                    .exportHandler = app.m_pExportHandler.Get(),
                    .site = app.m_pStatusSite.Get(),
                    .log = app,
                    .specificationClass = app.m_specificationClass,
                    .projectName = projectName,
                    .exchangePath = app.m_strExchangePath,
                    .isPackage = app.m_bPackage,
                    .language = app.m_bstrLanguage,
                    .axesModelPath = app.m_bstrAxesModelPath,
                    .axesPosition = app.m_axesPosition,
                    .dataFolder = GetDataFolder(),
                    .settings = {.user = product.GetProductRegistryKey(false),
                                 .machine = product.GetProductRegistryKey(true)}});
}

int NotifyContentManager(CZTInvisible& app, const wchar_t* action, const wchar_t* argument) {
    const Delivery delivery =
        DeliverNotification(app.m_strExchangePath, action, argument, SharedTcpMessageClient);
    // The text may hold a "%" of the client's.
    if (!delivery.text.empty())
        ConsolePrint(L"%s", delivery.text.c_str());
    return delivery.result;
}

} // namespace zt
