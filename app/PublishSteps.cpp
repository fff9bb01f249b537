#include "cms/TcpMessageClient.h"

#include "app/PublishSteps.h"

#include "app/ZTInvisible.h"
#include "cms/Notification.h"
#include "config/DataFolder.h"
#include "project/StatusDispSite.h"
#include "publish/PublishProject.h"
#include "support/Output.h"

namespace zt {

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
