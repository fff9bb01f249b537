#pragma once

#include <windows.h>

#include <functional>

namespace zt {

class CZTInvisible;

// What the pipeline has done by other parts of the program.
struct PipelineServices {
    // As declared in config/LoadConfiguration.h.
    std::function<HRESULT(CZTInvisible& app, const wchar_t* configFilePath)> loadConfiguration;
    // As declared in config/LoadSpecification.h.
    std::function<bool(CZTInvisible& app, const wchar_t* specName, const wchar_t* requiredVersion)>
        loadSpecification;
    // As declared in project/UpdateProjectDocument.h.
    std::function<bool(CZTInvisible& app)> updateProjectDocument;
    // As declared in publish/PublishProject.h.
    std::function<HRESULT(CZTInvisible& app, const wchar_t* projectName)> publishProject;
};

} // namespace zt
