#include "cms/TcpMessageClient.h"

#include "cms/NotifyContentManager.h"

#include "support/Output.h"
#include "app/ZTInvisible.h"
#include "cms/Notification.h"

namespace zt {

int NotifyContentManager(CZTInvisible& app, const wchar_t* action, const wchar_t* argument) {
    const Delivery delivery =
        DeliverNotification(app.m_strExchangePath, action, argument, SharedTcpMessageClient);
    // The text may hold a "%" of the client's.
    if (!delivery.text.empty())
        ConsolePrint(L"%s", delivery.text.c_str());
    return delivery.result;
}

} // namespace zt
