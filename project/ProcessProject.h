#pragma once

#include "app/Metadata.h"

namespace zt {

class CZTInvisible;

// Imports the project that stands in the exchange folder as projectName + ".kvp", opens it, applies
// what is asked for (empty texts ask for nothing), writes it back when it changed and publishes it
// when the run asks for that. Raises every failure with its message text.
void ProcessProject(CZTInvisible& app, const wchar_t* projectName, const wchar_t* documentPath,
                    const wchar_t* editProgId, const wchar_t* editMethod,
                    const MetadataMap& metadata, const wchar_t* newProjectName);

} // namespace zt
