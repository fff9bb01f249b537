#include "project/Pipeline.h"

#include "app/ZTInvisible.h"
#include "framework/WinApp.h"
#include "project/ChangeSteps.h"
#include "project/ImportStep.h"
#include "project/OpenStep.h"
#include "project/SaveStep.h"
#include "project/StartStep.h"

namespace zt {

namespace {

// Returns whether the project has changed since it was loaded.
bool ApplyChanges(CZTInvisible& app, const ProjectRequest& request,
                  const PipelineServices& services) {
    bool modified = false;
    if (!request.metadata.empty())
        modified |= ApplyMetadata(app, request.metadata);
    if (!request.newProjectName.empty())
        modified |= RenameProject(app, request.newProjectName);
    if (!request.editProgId.empty() && !request.editMethod.empty())
        modified |= RunEditHandler(app, request.editProgId, request.editMethod);
    if (!request.documentPath.empty())
        modified |= AttachDocument(app, request.documentPath);
    if (app.m_bUpdateDoc)
        modified |= services.updateProjectDocument(app);
    if (app.m_bNewRevision)
        modified |= StartNewRevision(app);
    return modified;
}

} // namespace

void RunPipeline(CZTInvisible& app, const ProjectRequest& request,
                 const PipelineServices& services) {
    app.Log(L"Processing project '%s'\n", request.projectName.c_str());
    CWaitCursor waitCursor;

    CreateStatusSite(app);
    CreateKernelAdmin(app);
    // Held to the end, so that the kernel keeps its host for as long as the pipeline runs.
    const ComPtr<IObjectWithSite> kernelSite = ConnectStatusSite(app);
    IntroduceClient(app);
    AutomationObject<Administration> administration;
    CreateAdministration(administration);

    OpenConfiguration(app, administration, request.projectName, services);
    ImportProject(app, administration, request.projectName);
    const _bstr_t revision = ReadImportedProject(app);

    OpenProject(app, revision);
    LoadSpecificationOfProject(app, services);
    SelectProduct(app);
    LoadProject(app, waitCursor);

    if (ApplyChanges(app, request, services))
        SaveProject(app, administration, request.projectName);
    if (app.m_bPublish && FAILED(services.publishProject(app, request.projectName.c_str())))
        throw L"Error publishing project";
    app.Log(L"SUCCESS: Project '%s' successfully processed\n", request.projectName.c_str());
}

} // namespace zt
