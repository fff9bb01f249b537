#include "components/Creation.h"

namespace zt {

HRESULT CreateByProgId(const wchar_t* progId, IUnknown* outer, DWORD classContext, REFIID iid,
                       void** object) {
    *object = nullptr;
    CLSID classId = {};
    HRESULT result = CLSIDFromProgID(progId, &classId);
    if (SUCCEEDED(result))
        result = CoCreateInstance(classId, outer, classContext, iid, object);
    if (SUCCEEDED(result) && *object == nullptr)
        result = E_POINTER;
    return result;
}

} // namespace zt
