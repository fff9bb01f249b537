// The changes to the open project that a run can ask for. Each step returns whether it changed the
// project and raises a message text on failure.
#pragma once

#include "app/Metadata.h"

#include <string>

namespace zt {

class CZTInvisible;

// Sets the items in the map's order. An item that the project already has a value for is left
// alone unless its entry says to set it.
bool ApplyMetadata(CZTInvisible& app, const MetadataMap& metadata);

// A name that the kernel refuses is no failure: the project keeps its own.
bool RenameProject(CZTInvisible& app, const std::wstring& newName);

// Creates the handler and has its method work on the kernel.
bool RunEditHandler(CZTInvisible& app, const std::wstring& progId, const std::wstring& method);

// Leaves the document's folder on the application object.
bool AttachDocument(CZTInvisible& app, const std::wstring& documentPath);

bool StartNewRevision(CZTInvisible& app);

} // namespace zt
