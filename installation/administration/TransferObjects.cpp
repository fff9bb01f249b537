#include "installation/administration/TransferObjects.h"

#include "installation/runtime/EarlyBound.h"

#include <utility>

namespace devinst {

ExtractedProjectObject::ExtractedProjectObject(std::filesystem::path archive)
    : StandIn("ExtractedProject"), m_archive(std::move(archive)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ExtractedProjectObject>());
}

ExportedProjectObject::ExportedProjectObject(std::filesystem::path folder)
    : StandIn("ExportedProject"), m_folder(std::move(folder)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, ExportedProjectObject>());
}

} // namespace devinst
