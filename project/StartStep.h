// Brings up the kernel and the administration component.
#pragma once

#include "components/Automation.h"
#include "components/contracts/Administration.h"

#include <ocidl.h>

namespace zt {

class CZTInvisible;

// Makes the kernel's host; the application object keeps it.
void CreateStatusSite(CZTInvisible& app);

// Makes the kernel's administration interface; the application object keeps it. Raises a message
// text.
void CreateKernelAdmin(CZTInvisible& app);

// Hands the host to the kernel. Returns the kernel's site interface, null when it has none.
ComPtr<IObjectWithSite> ConnectStatusSite(CZTInvisible& app);

// Tells the kernel which client it works for. Raises the framework's memory exception.
void IntroduceClient(CZTInvisible& app);

// Raises a message text.
void CreateAdministration(AutomationObject<Administration>& administration);

// What the kernel and the configuration know the program by.
inline constexpr char ClientName[] = "ZeltorAuthor_Invisible";

} // namespace zt
