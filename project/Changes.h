// The changes to the open project that a run can ask for. Each returns whether it changed the
// project, logs what it changed and raises a message text on failure.
#pragma once

#include "components/contracts/Kernel.h"
#include "project/ProjectRequest.h"
#include "support/RunLog.h"

#include <string>

namespace zt {

struct ProjectRun;

// Sets the items in the map's order. An item that the project already has a value for is left
// alone unless its entry says to set it.
bool ApplyMetadata(KernelProject* project, const MetadataMap& metadata, RunLog& log);

// A name that the kernel refuses is no failure: the project keeps its own.
bool RenameProject(KernelProject* project, const std::wstring& newName, RunLog& log);

// Creates the handler and has its method work on the kernel.
bool RunEditHandler(KernelAdmin* kernel, const std::wstring& progId, const std::wstring& method,
                    RunLog& log);

// Attaches the request's document and leaves its folder on the run, also where it is refused.
bool AttachDocument(const ProjectRequest& request, const ProjectRun& run);

bool StartNewRevision(KernelProject* project, RunLog& log);

} // namespace zt
