#pragma once

#include <windows.h>

namespace zt {

class CZTInvisible;

// What the pipeline has done by other parts of the program; each as its own header tells.
struct PipelineServices {
    HRESULT (*loadConfiguration)(CZTInvisible& app, const wchar_t* configFilePath);
    bool (*loadSpecification)(CZTInvisible& app, const wchar_t* specName,
                              const wchar_t* requiredVersion);
    bool (*updateProjectDocument)(CZTInvisible& app);
    HRESULT (*publishProject)(CZTInvisible& app, const wchar_t* projectName);
};

} // namespace zt
