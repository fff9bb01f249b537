#include "installation/administration/AdministrationObject.h"

#include "installation/administration/ArchiveObject.h"
#include "installation/administration/ConfigurationObject.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"
#include "installation/runtime/Ref.h"

#include <filesystem>

namespace devinst {

namespace fs = std::filesystem;

namespace {

constexpr LONG ReadExisting = 2;
constexpr LONG CreateNew = 0;

} // namespace

AdministrationObject::AdministrationObject() : StandIn(zt::Administration::Name) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, AdministrationObject>());
}

// Gives no object for a file that is not there, or in a folder that is not there.
HRESULT AdministrationObject::On(zt::Administration::OpenArchive, BSTR path, LONG mode,
                                 IDispatch** archive) {
    if (SysStringLen(path) == 0 || (mode != ReadExisting && mode != CreateNew))
        throw ComFailure{E_INVALIDARG, L"The archive cannot be opened in this way."};
    const fs::path file = path;
    const bool possible = mode == ReadExisting
                              ? fs::is_regular_file(file)
                              : fs::is_directory(file.parent_path()) && !fs::is_directory(file);
    if (possible)
        *archive = Ref<ArchiveObject>::Make(file, mode == CreateNew).Detach<IDispatch>();
    return S_OK;
}

HRESULT AdministrationObject::On(zt::Administration::OpenConfiguration, BSTR project,
                                 IDispatch** configuration) {
    if (SysStringLen(project) == 0)
        throw ComFailure{E_INVALIDARG, L"The configuration needs a project's name."};
    *configuration = Ref<ConfigurationObject>::Make().Detach<IDispatch>();
    return S_OK;
}

HRESULT AdministrationObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<zt::Administration>(name, id);
}

HRESULT AdministrationObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                             VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<zt::Administration>(*this, id, kind, parameters, result, exception);
}

} // namespace devinst
