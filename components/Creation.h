// Creation of the installation's components.
#pragma once

#include <windows.h>
#include <objbase.h>

namespace zt {

// In-process server, in-process handler, local server, remote server.
constexpr DWORD AllServers = 0x17;
static_assert(AllServers == CLSCTX_ALL);

// Creates the component that progId names and asks for IUnknown. *object must be empty before the
// call; it is null on failure. Returns the failing result code of the class lookup or the creation.
HRESULT CreateComponent(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                        IUnknown** object);

// The same, asking for IID_ExportHandler.
HRESULT CreateHandlerComponent(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                               IUnknown** handler);

// The same, asking for IDispatch: edit handlers are reached by name only.
HRESULT CreateEditHandler(const wchar_t* progId, IUnknown* outer, DWORD classContext,
                          IDispatch** handler);

// The same, for any interface. A creation that succeeds without an object counts as E_POINTER.
HRESULT CreateByProgId(const wchar_t* progId, IUnknown* outer, DWORD classContext, REFIID iid,
                       void** object);

} // namespace zt
