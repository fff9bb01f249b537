#pragma once

#include "project/PipelineServices.h"
#include "project/ProjectRequest.h"

namespace zt {

// The whole sequence of ProcessProject.
void RunPipeline(CZTInvisible& app, const ProjectRequest& request,
                 const PipelineServices& services);

} // namespace zt
