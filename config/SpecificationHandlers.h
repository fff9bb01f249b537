// The components that a specification names.
#pragma once

#include "config/Specification.h"
#include "config/XmlDocument.h"

namespace zt {

// Has the libraries of this program's platform register themselves.
void RegisterHandlerLibraries(const SpecificationRun& run, const XmlElement& configuration);

// Creates the sequence-number and the notification handler and gives them the kernel. A handler
// that cannot be created is left out; one that does not take the kernel is kept without.
void CreateKernelHandlers(const SpecificationRun& run, const XmlElement& configuration);

// Creates the export handler and has it load its script. A handler that refuses its script is
// dropped; one without a script is kept as it is.
void CreateExportHandler(const SpecificationRun& run, const XmlElement& configuration);

} // namespace zt
