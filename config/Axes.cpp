#include "config/Axes.h"

#include "components/Installation.h"
#include "components/Values.h"
#include "config/SpecificationTexts.h"
#include "config/XmlDocument.h"

namespace zt {

std::wstring FindAxesModel(const std::wstring& axesId) {
    const std::optional<std::wstring> path = ModelFileOfAxes(axesId);
    XmlDocument catalogue;
    _bstr_t found;
    if (path && SUCCEEDED(catalogue.Create()) &&
        catalogue.Load(AxesCataloguePath(GetDataFolder()).c_str()))
        found = catalogue.SelectSingle(path->c_str()).Text();
    return found.length() != 0 ? std::wstring(OrEmpty(found)) : axesId + L".wrl";
}

} // namespace zt
