#include "project/ProcessProject.h"

#include "config/LoadConfiguration.h"
#include "config/LoadSpecification.h"
#include "project/Pipeline.h"
#include "project/UpdateProjectDocument.h"
#include "app/PublishSteps.h"

namespace zt {

void ProcessProject(CZTInvisible& app, const wchar_t* projectName, const wchar_t* documentPath,
                    const wchar_t* editProgId, const wchar_t* editMethod,
                    const MetadataMap& metadata, const wchar_t* newProjectName) {
    const ProjectRequest request = {projectName, documentPath, editProgId,
                                    editMethod,  metadata,     newProjectName};
    RunPipeline(app, request,
                {&LoadConfiguration, &LoadSpecification, &UpdateProjectDocument, &PublishProject});
}

} // namespace zt
