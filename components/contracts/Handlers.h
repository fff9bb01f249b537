// The components that a specification names. Created by ProgID; edit handlers and the "Kernel"
// property of the sequence-number and notification handlers are reached by name.
#pragma once

#include "components/contracts/Kernel.h"

namespace zt {

// clang-format off
// operation                       index  arguments
#define ZT_EXPORT_HANDLER(METHOD)                                                 \
    METHOD(GetFirstName,               8, KernelProject*, BSTR*)                  \
    METHOD(GetSecondName,              9, KernelProject*, BSTR*)

#define ZT_SCRIPT_EXPORTER(METHOD)                                                \
    METHOD(LoadScript,                 3, BSTR /* path */)
// clang-format on

// Interface IID_ExportHandler, asked for at creation.
struct ExportHandler : IUnknown {
    static constexpr char Name[] = "ExportHandler";
    static constexpr const IID& Iid = IID_ExportHandler;
    ZT_CONTRACT(ZT_EXPORT_HANDLER, ZT_EARLY_BOUND)
};

// Interface IID_ScriptExporter of an export handler; derives from IUnknown only.
struct ScriptExporter : IUnknown {
    static constexpr char Name[] = "ScriptExporter";
    static constexpr const IID& Iid = IID_ScriptExporter;
    ZT_CONTRACT(ZT_SCRIPT_EXPORTER, ZT_EARLY_BOUND)
};

} // namespace zt
