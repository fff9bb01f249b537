// The sequence of a run that works on a project.
#pragma once

#include "components/Automation.h"
#include "components/SpecificationClass.h"
#include "components/contracts/Administration.h"
#include "components/contracts/Kernel.h"
#include "project/ProjectRequest.h"
#include "project/StatusDispSite.h"
#include "support/ComPtr.h"
#include "support/RunLog.h"

#include <comdef.h>

#include <string>

namespace zt {

// What the pipeline has done by other parts of the program.
class PipelineServices {
  public:
    // Returns a failing code where the configuration is not loaded, or raises a message text.
    virtual HRESULT LoadConfiguration(const wchar_t* configFilePath) = 0;
    // Leaves the specification's language, class and document handler on the run. False, reported
    // already, where it is not loaded.
    virtual bool LoadSpecification(const wchar_t* specName, const wchar_t* requiredVersion) = 0;
    // Returns whether the project changed; raises a message text.
    virtual bool UpdateProjectDocument() = 0;
    // Returns a failing code, or raises a message text, where the project is not published.
    virtual HRESULT PublishProject(const wchar_t* projectName) = 0;

  protected:
    PipelineServices() = default;
    PipelineServices(const PipelineServices&) = default;
    PipelineServices& operator=(const PipelineServices&) = default;
    ~PipelineServices() = default;
};

// What the run keeps of its project until its end: the pipeline fills it, and the services read
// and fill it as well.
struct ProjectRun {
    RunLog& log;
    ComPtr<CStatusDispSite>& statusSite;
    ComPtr<KernelAdmin>& kernel;
    ComPtr<KernelProject>& project;
    AutomationObject<Configuration>& configuration;
    _bstr_t& importedProjectId;
    std::wstring& documentFolder; // of the attached document
    _bstr_t& language;
    const _bstr_t& documentHandler;
    const SpecificationClass& specificationClass;
};

// The whole sequence: imports and opens the project, applies what is asked for, writes the project
// back when it changed and publishes it. Raises every failure with its message text.
void RunPipeline(const ProjectRequest& request, const ProjectRun& run, PipelineServices& services);

} // namespace zt
