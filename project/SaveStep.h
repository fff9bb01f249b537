#pragma once

#include "components/Automation.h"
#include "components/contracts/Administration.h"

#include <string>

namespace zt {

class CZTInvisible;

// Writes the open project back to its archive in the exchange folder. Raises a message text.
void SaveProject(CZTInvisible& app, AutomationObject<Administration>& administration,
                 const std::wstring& projectName);

} // namespace zt
