// Loading of the specification that a project asks for.
#pragma once

#include "components/SpecificationClass.h"
#include "components/contracts/Handlers.h"
#include "components/contracts/Kernel.h"
#include "support/ComPtr.h"
#include "support/RunLog.h"

#include <comdef.h>

#include <cstdint>

namespace zt {

// What the loading works with and what it leaves on the run.
struct SpecificationRun {
    KernelAdmin* kernel;
    RunLog& log;
    _bstr_t& language; // the description's where it is empty
    SpecificationClass& specificationClass;
    _bstr_t& documentHandler;
    ComPtr<IUnknown>& sequenceNumberHandler;
    ComPtr<IUnknown>& notificationHandler;
    ComPtr<ExportHandler>& exportHandler;
    _bstr_t& axesModelPath;
    std::uint32_t& axesPosition;
};

// Finds the specification in the installation's data folder, checks that it is as new as the
// project requires (null: any) and has the kernel load it. Every failure is reported through the
// log; false when the specification is not loaded.
bool ReadSpecification(const SpecificationRun& run, const wchar_t* name,
                       const wchar_t* requiredVersion);

} // namespace zt
