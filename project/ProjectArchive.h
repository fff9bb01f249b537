// The project on its way from its archive into the configuration, and back. All functions raise a
// message text or the framework's OLE exception.
#pragma once

#include "components/Automation.h"
#include "components/contracts/Administration.h"
#include "components/contracts/Kernel.h"

#include <comdef.h>

#include <string>

namespace zt {

class PipelineServices;

// Opens the project's configuration and has its file read.
void OpenConfiguration(AutomationObject<Administration>& administration,
                       const std::wstring& projectName,
                       AutomationObject<Configuration>& configuration, PipelineServices& services);

// Imports the project that the archive holds.
void ImportProject(AutomationObject<Administration>& administration,
                   const std::wstring& archivePath, AutomationObject<Configuration>& configuration);

// Asks the configuration what was imported. Returns the revision, which may be empty; projectId
// receives the project's identifier inside the configuration, which may not.
_bstr_t ReadImportedProject(AutomationObject<Configuration>& configuration, _bstr_t& projectId);

// The kernel's save mode for a project that goes back to its archive.
constexpr LONG SaveToArchive = 1;

// Writes the open project to a new archive in place of the old one. The archive is released, and
// so complete, when this returns.
void SaveProject(AutomationObject<Administration>& administration, const std::wstring& archivePath,
                 AutomationObject<Configuration>& configuration, KernelProject* project);

} // namespace zt
