// Creation of components, and their interfaces.
#pragma once

#include "components/ComponentIds.h"
#include "components/contracts/Handlers.h"
#include "support/ComPtr.h"

#include <windows.h>
#include <objbase.h>

namespace zt {

// In-process server, in-process handler, local server, remote server.
constexpr DWORD AllServers = 0x17;
static_assert(AllServers == CLSCTX_ALL);

// The identifier of Interface: beside its contract for a component's own, else the platform's.
template <typename Interface>
constexpr const IID& IidOf() {
    if constexpr (requires { Interface::Iid; })
        return Interface::Iid;
    else
        return __uuidof(Interface);
}

// The object's Interface; null without an object, where the object refuses it, and where it gives
// none.
template <typename Interface>
ComPtr<Interface> Query(IUnknown* object, REFIID iid = IidOf<Interface>()) {
    void* found = nullptr;
    if (object == nullptr || FAILED(object->QueryInterface(iid, &found)))
        return nullptr;
    return Adopt(static_cast<Interface*>(found));
}

// Creates an object of the class in any server. Returns the platform's result code; *object is what
// the platform gives, whatever the result code says.
template <typename Interface>
HRESULT Create(REFCLSID classId, Interface** object, REFIID iid = IidOf<Interface>()) {
    void* created = nullptr;
    const HRESULT result = CoCreateInstance(classId, nullptr, AllServers, iid, &created);
    *object = static_cast<Interface*>(created);
    return result;
}

// Creates the component that progId names. *object is null on failure. Returns the failing result
// code of the class lookup or the creation; a creation that succeeds without an object counts as
// E_POINTER.
HRESULT CreateByProgId(const wchar_t* progId, IUnknown* outer, DWORD classContext, REFIID iid,
                       void** object);

template <typename Interface>
HRESULT Create(const wchar_t* progId, IUnknown* outer, DWORD classContext, Interface** object) {
    void* created = nullptr;
    const HRESULT result =
        CreateByProgId(progId, outer, classContext, IidOf<Interface>(), &created);
    *object = static_cast<Interface*>(created);
    return result;
}

inline HRESULT CreateComponent(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                               IUnknown** object) {
    return Create(progId, outer, classContext, object);
}

inline HRESULT CreateHandlerComponent(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                                      ExportHandler** handler) {
    return Create(progId, outer, classContext, handler);
}

// Edit handlers are reached by name only.
inline HRESULT CreateEditHandler(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                                 IDispatch** handler) {
    return Create(progId, outer, classContext, handler);
}

} // namespace zt
