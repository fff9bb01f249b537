#include "project/Pipeline.h"

#include "framework/WinApp.h"
#include "project/Changes.h"
#include "project/Opening.h"
#include "project/ProjectArchive.h"
#include "project/Start.h"

namespace zt {

namespace {

// Returns the kernel's site interface, which keeps the kernel's host for as long as it is held.
ComPtr<IObjectWithSite> StartKernel(const ProjectRun& run) {
    run.statusSite = new CStatusDispSite(&run.log);
    CreateKernelAdmin(run.kernel);
    ComPtr<IObjectWithSite> kernelSite = ConnectStatusSite(run.kernel.Get(), run.statusSite.Get());
    IntroduceClient(run.kernel.Get());
    return kernelSite;
}

// Opens the imported project with the specification that it asks for and has the kernel load it.
void LoadProject(const ProjectRun& run, const _bstr_t& revision, CWaitCursor& waitCursor,
                 PipelineServices& services) {
    ProductInformation& product = run.statusSite->Product();
    OpenProject(run.kernel.Get(), OpenPath(run.importedProjectId, revision), run.project);
    LoadSpecificationOfProject(run.project.Get(), run.language, run.log, services);
    SelectProduct(run.kernel.Get(), run.specificationClass, product);
    LoadOpenProject(run.project.Get(), waitCursor);
    run.log.Log(L"Project loaded by %s v.%s\n", product.GetVersionString(L"ProductName").c_str(),
                product.GetFileVersion().c_str());
}

// Returns whether the project has changed since it was loaded.
bool ApplyChanges(const ProjectRequest& request, const ProjectRun& run,
                  PipelineServices& services) {
    KernelProject* const project = run.project.Get();
    bool modified = false;
    if (!request.metadata.empty())
        modified |= ApplyMetadata(project, request.metadata, run.log);
    if (!request.newProjectName.empty())
        modified |= RenameProject(project, request.newProjectName, run.log);
    if (!request.editProgId.empty() && !request.editMethod.empty())
        modified |=
            RunEditHandler(run.kernel.Get(), request.editProgId, request.editMethod, run.log);
    if (!request.documentPath.empty())
        modified |= AttachDocument(request, run);
    if (request.updateDocument)
        modified |= services.UpdateProjectDocument();
    if (request.newRevision)
        modified |= StartNewRevision(project, run.log);
    return modified;
}

} // namespace

void RunPipeline(const ProjectRequest& request, const ProjectRun& run, PipelineServices& services) {
    const std::wstring archivePath =
        request.exchangePath + L"\\" + ArchiveFileName(request.projectName);
    run.log.Log(L"Processing project '%s'\n", request.projectName.c_str());
    CWaitCursor waitCursor;

    const ComPtr<IObjectWithSite> kernelSite = StartKernel(run);
    AutomationObject<Administration> administration;
    CreateAdministration(administration);

    OpenConfiguration(administration, request.projectName, run.configuration, services);
    ImportProject(administration, archivePath, run.configuration);
    const _bstr_t revision = ReadImportedProject(run.configuration, run.importedProjectId);

    LoadProject(run, revision, waitCursor, services);
    if (ApplyChanges(request, run, services)) {
        KernelAdmin::SetSaveMode::Call(run.kernel.Get(), SaveToArchive);
        SaveProject(administration, archivePath, run.configuration, run.project.Get());
        run.log.Log(L"Project saved to KVP file\n");
    }
    if (request.publish && FAILED(services.PublishProject(request.projectName.c_str())))
        throw L"Error publishing project";
    run.log.Log(L"SUCCESS: Project '%s' successfully processed\n", request.projectName.c_str());
}

} // namespace zt
