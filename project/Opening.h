// Opens the imported project and has the kernel load it as its specification asks.
#pragma once

#include "components/Installation.h"
#include "components/SpecificationClass.h"
#include "components/contracts/Kernel.h"
#include "framework/WinApp.h"
#include "support/ComPtr.h"
#include "support/RunLog.h"

#include <comdef.h>

namespace zt {

class PipelineServices;

// What the kernel opens a new revision of the project by; revision may be empty.
_bstr_t OpenPath(const _bstr_t& projectId, const _bstr_t& revision);

// Raises a message text.
void OpenProject(KernelAdmin* kernel, const _bstr_t& openPath, ComPtr<KernelProject>& project);

// Reads which specification and which language the project has, loads the specification, which may
// change the language, and gives the project the language of the run. Raises a message text.
void LoadSpecificationOfProject(KernelProject* project, _bstr_t& language, RunLog& log,
                                PipelineServices& services);

// Gives the kernel and its host the product that works on projects of the specification's class.
void SelectProduct(KernelAdmin* kernel, SpecificationClass specificationClass,
                   ProductInformation& product);

// Brings the wait cursor back after the loading. Raises a message text with the kernel's own
// description.
void LoadOpenProject(KernelProject* project, CWaitCursor& waitCursor);

} // namespace zt
