#include "components/Creation.h"

#include "components/ComponentIds.h"

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

HRESULT CreateComponent(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                        IUnknown** object) {
    return CreateByProgId(progId, outer, classContext, IID_IUnknown,
                          reinterpret_cast<void**>(object));
}

HRESULT CreateHandlerComponent(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                               IUnknown** handler) {
    return CreateByProgId(progId, outer, classContext, IID_ExportHandler,
                          reinterpret_cast<void**>(handler));
}

HRESULT CreateEditHandler(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                          IDispatch** handler) {
    return CreateByProgId(progId, outer, classContext, IID_IDispatch,
                          reinterpret_cast<void**>(handler));
}

} // namespace zt
