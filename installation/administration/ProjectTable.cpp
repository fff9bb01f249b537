#include "installation/administration/ProjectTable.h"

#include <comdef.h>

namespace devinst {

void GiveProjectTable(const std::wstring& first, const std::wstring& second, VARIANT* table) {
    SAFEARRAYBOUND bounds[] = {{1, 0}, {2, 0}};
    table->parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    table->vt = VT_ARRAY | VT_BSTR;
    LONG at[] = {0, 0};
    SafeArrayPutElement(table->parray, at, _bstr_t(first.c_str()).GetBSTR());
    at[1] = 1;
    SafeArrayPutElement(table->parray, at, _bstr_t(second.c_str()).GetBSTR());
}

} // namespace devinst
