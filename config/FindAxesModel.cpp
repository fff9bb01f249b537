#include "config/FindAxesModel.h"

#include "config/DataFolder.h"
#include "config/Selection.h"
#include "config/SpecificationPaths.h"
#include "support/Text.h"
#include "config/XmlDocument.h"

#include <string>

namespace zt {

namespace {

_bstr_t CataloguedModelFile(const std::wstring& axesId) {
    XmlDocument catalogue;
    const std::optional<std::wstring> path = ModelFileOfAxes(axesId);
    if (!path || FAILED(catalogue.Create()) ||
        !catalogue.Load(AxesCataloguePath(GetDataFolder()).c_str()))
        return {};
    return catalogue.SelectSingle(path->c_str()).Text();
}

} // namespace

void FindAxesModel(const wchar_t* axesId, BSTR* modelPath) {
    const std::wstring id = WideText(axesId);
    _bstr_t found = CataloguedModelFile(id);
    if (found.length() == 0)
        found = (id + L".wrl").c_str();
    *modelPath = found.copy();
}

} // namespace zt
