// Opens the imported project and has the kernel load it as its specification asks.
#pragma once

#include "project/PipelineServices.h"

#include <comdef.h>

class CWaitCursor;

namespace zt {

// Opens the new project (revision may be empty); the application object keeps it. Raises a message
// text.
void OpenProject(CZTInvisible& app, const _bstr_t& revision);

// Reads which specification and which language the project has, loads the specification and tells
// the project the language of the run. Raises a message text.
void LoadSpecificationOfProject(CZTInvisible& app, const PipelineServices& services);

// Tells the kernel and its host which product works on projects of the specification's class.
void SelectProduct(CZTInvisible& app);

// Raises a message text with the kernel's own description.
void LoadProject(CZTInvisible& app, CWaitCursor& waitCursor);

} // namespace zt
