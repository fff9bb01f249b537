#pragma once

#include "components/contracts/Handlers.h"
#include "installation/handlers/ExportScript.h"
#include "installation/runtime/EarlyBound.h"

namespace devinst {

// "KVDev.Export": an export handler whose names stand in its script; empty names without one.
class SampleExport final : public StandIn {
  public:
    SampleExport();

    HRESULT On(zt::ExportHandler::GetFirstName, zt::KernelProject* project, BSTR* name);
    HRESULT On(zt::ExportHandler::GetSecondName, zt::KernelProject* project, BSTR* name);
    // Fails, and keeps the names as they are, for a script that is missing or malformed.
    HRESULT On(zt::ScriptExporter::LoadScript, BSTR path);

  private:
    ~SampleExport() override = default;

    ExportScript m_script;
};

} // namespace devinst
