#include "installation/handlers/SampleExport.h"

#include "components/ComponentIds.h"

#include <filesystem>
#include <fstream>
#include <iterator>

namespace devinst {

SampleExport::SampleExport() : StandIn("SampleExport") {
    AddFace(IID_ExportHandler, FunctionTable<zt::ExportHandler, SampleExport>());
    AddFace(IID_ScriptExporter, FunctionTable<zt::ScriptExporter, SampleExport>());
}

HRESULT SampleExport::On(zt::ExportHandler::GetFirstName, zt::KernelProject*, BSTR* name) {
    *name = SysAllocString(m_script.firstName.c_str());
    return S_OK;
}

HRESULT SampleExport::On(zt::ExportHandler::GetSecondName, zt::KernelProject*, BSTR* name) {
    *name = SysAllocString(m_script.secondName.c_str());
    return S_OK;
}

HRESULT SampleExport::On(zt::ScriptExporter::LoadScript, BSTR path) {
    const std::wstring name = path != nullptr ? path : L"";
    std::ifstream file(std::filesystem::path(name), std::ios::binary);
    if (!file)
        throw ComFailure{HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND), L"No export script: " + name};
    const std::string text{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const std::optional<ExportScript> script = ParseExportScript(text);
    if (!script)
        throw ComFailure{E_FAIL, L"Malformed export script: " + name};
    m_script = *script;
    return S_OK;
}

} // namespace devinst
