#pragma once

#include "app/Metadata.h"

#include <string>

namespace zt {

// What the command line asks to do with one project. Empty texts ask for nothing.
struct ProjectRequest {
    std::wstring projectName; // never empty; without folder and extension
    std::wstring documentPath;
    std::wstring editProgId;
    std::wstring editMethod;
    const MetadataMap& metadata;
    std::wstring newProjectName;
};

} // namespace zt
