// The functions that take the application object: each hands one folder of the program what it
// reads of the run and keeps what comes back on the run. Below them nothing knows the application
// object.
#pragma once

#include "project/ProjectRequest.h"

#include <windows.h>

namespace zt {

class CZTInvisible;

// Imports the project that stands in the exchange folder as projectName + ".kvp", opens it, applies
// what is asked for (empty texts ask for nothing), writes it back when it changed and publishes it
// when the run asks for that. Raises every failure with its message text.
void ProcessProject(CZTInvisible& app, const wchar_t* projectName, const wchar_t* documentPath,
                    const wchar_t* editProgId, const wchar_t* editMethod,
                    const MetadataMap& metadata, const wchar_t* newProjectName);

// Reads the projects' and the publications' location from the configuration file (XML), hands the
// first to the kernel and keeps the second on the application object. Returns the kernel's result,
// or a failing code when the platform's XML parser is missing. Raises a message text for a missing
// or malformed file and for a location that the kernel refuses.
HRESULT LoadConfiguration(CZTInvisible& app, const wchar_t* configFilePath);

// Finds the specification in the installation's data folder, checks that it is as new as the
// project requires (null: any), has the kernel load it and leaves its class, handlers and axes on
// the application object. Every failure is reported through LogError; false when the
// specification is not loaded.
bool LoadSpecification(CZTInvisible& app, const wchar_t* specName, const wchar_t* requiredVersion);

// Generates the project's document when it has none and updates it through the authoring system's
// hidden editor control. Returns whether the project changed; raises a message text on failure.
bool UpdateProjectDocument(CZTInvisible& app);

// Publishes the open project beside its archive, into a folder or, when the run asks for a package,
// into one file. Returns a success code or raises a message text.
HRESULT PublishProject(CZTInvisible& app, const wchar_t* projectName);

// Sends one action to the content-management client, over one TCP connection. argument may be null
// (none). Returns 1 when the client took the message and also when no client is configured, 0 for
// every failure, which is written to standard output; nothing is raised.
int NotifyContentManager(CZTInvisible& app, const wchar_t* action, const wchar_t* argument);

} // namespace zt
