#pragma once

#include "app/Metadata.h"

#include <functional>

namespace zt {

class CZTInvisible;

// What the run driver calls for the work itself. The program's entry hands the real functions in;
// one that is not given is not called.
struct RunServices {
    // As declared in app/Steps.h.
    std::function<void(CZTInvisible& app, const wchar_t* projectName, const wchar_t* documentPath,
                       const wchar_t* editProgId, const wchar_t* editMethod,
                       const MetadataMap& metadata, const wchar_t* newProjectName)>
        processProject;
    // As declared in app/Steps.h.
    std::function<int(CZTInvisible& app, const wchar_t* action, const wchar_t* argument)>
        notifyContentManager;
};

} // namespace zt
