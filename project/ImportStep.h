// Opens the configuration and imports the project from its archive.
#pragma once

#include "components/Automation.h"
#include "components/contracts/Administration.h"
#include "project/PipelineServices.h"

#include <string>

namespace zt {

// Opens the project's configuration, which the application object keeps, and reads its file. Raises
// a message text.
void OpenConfiguration(CZTInvisible& app, AutomationObject<Administration>& administration,
                       const std::wstring& projectName, const PipelineServices& services);

// Imports the project from the archive in the exchange folder. Raises a message text when the
// archive lists none.
void ImportProject(CZTInvisible& app, AutomationObject<Administration>& administration,
                   const std::wstring& projectName);

// Asks the configuration what was imported: leaves the project's id on the application object and
// returns the revision, which may be empty. Raises a message text without an id.
_bstr_t ReadImportedProject(CZTInvisible& app);

// The project's archive in the exchange folder.
std::wstring ArchivePath(const CZTInvisible& app, const std::wstring& projectName);

// The folder of the configuration that holds the projects' representations.
std::wstring RepresentationsFolder(CZTInvisible& app);

} // namespace zt
