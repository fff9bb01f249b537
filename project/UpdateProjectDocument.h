#pragma once

#include "components/contracts/Kernel.h"
#include "support/RunLog.h"

#include <comdef.h>

namespace zt {

// Generates the project's document, by the document handler, when it has none and updates it
// through the authoring system's hidden editor control, which removes the change marks where a new
// revision follows. Returns whether the project changed; raises a message text on failure.
bool UpdateDocument(KernelAdmin* kernel, KernelProject* project, const _bstr_t& documentHandler,
                    bool newRevision, RunLog& log);

} // namespace zt
