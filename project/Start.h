// Brings up the kernel, with its host, and the administration component.
#pragma once

#include "components/Automation.h"
#include "components/contracts/Administration.h"
#include "components/contracts/Kernel.h"
#include "project/StatusDispSite.h"

#include <ocidl.h>

namespace zt {

// What the kernel and the configuration know the program by.
inline constexpr char ClientName[] = "ZeltorAuthor_Invisible";

// Makes the kernel's administration interface. Raises a message text.
void CreateKernelAdmin(ComPtr<KernelAdmin>& kernel);

// Hands the host to the kernel. Returns the kernel's site interface, null when it has none.
ComPtr<IObjectWithSite> ConnectStatusSite(KernelAdmin* kernel, CStatusDispSite* statusSite);

// Gives the kernel the name of the client that it works for. Raises the framework's memory
// exception.
void IntroduceClient(KernelAdmin* kernel);

// Raises a message text.
void CreateAdministration(AutomationObject<Administration>& administration);

} // namespace zt
