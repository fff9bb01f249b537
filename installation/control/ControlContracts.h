// The platform's control interfaces as contracts: what a container that hosts a control for its
// automation alone may ask of it. Any other of their methods ends the run.
#pragma once

#include "components/Contract.h"
#include "installation/runtime/EarlyBound.h"

#include <windows.h>
#include <ocidl.h>
#include <oleidl.h>

#include <string>
#include <vector>

namespace devinst {

// clang-format off
// operation                       index  arguments
#define ZT_OLE_OBJECT(METHOD)                                                     \
    METHOD(SetClientSite,              3, IOleClientSite* /* null clears it */)   \
    METHOD(GetClientSite,              4, IOleClientSite**)                       \
    METHOD(Close,                      6, DWORD /* OLECLOSE */)                   \
    METHOD(DoVerb,                    11, LONG /* verb */, MSG*, IOleClientSite*, LONG, HWND, const RECT*) \
    METHOD(SetExtent,                 17, DWORD /* aspect */, SIZEL*)             \
    METHOD(GetExtent,                 18, DWORD, SIZEL*)                          \
    METHOD(GetMiscStatus,             22, DWORD, DWORD*)

#define ZT_OLE_IN_PLACE_OBJECT(METHOD)                                            \
    METHOD(GetWindow,                  3, HWND*)                                  \
    METHOD(InPlaceDeactivate,          5)                                         \
    METHOD(UIDeactivate,               6)                                         \
    METHOD(SetObjectRects,             7, const RECT* /* position */, const RECT* /* clip */)

#define ZT_PERSIST_STREAM_INIT(METHOD)                                            \
    METHOD(IsDirty,                    4)                                         \
    METHOD(InitNew,                    8)
// clang-format on

struct OleObject : IUnknown {
    static constexpr char Name[] = "OleObject";
    ZT_CONTRACT(ZT_OLE_OBJECT, ZT_EARLY_BOUND)
};

struct OleInPlaceObject : IUnknown {
    static constexpr char Name[] = "OleInPlaceObject";
    ZT_CONTRACT(ZT_OLE_IN_PLACE_OBJECT, ZT_EARLY_BOUND)
};

struct PersistStreamInit : IUnknown {
    static constexpr char Name[] = "PersistStreamInit";
    ZT_CONTRACT(ZT_PERSIST_STREAM_INIT, ZT_EARLY_BOUND)
};

// "(0,0)-(16,16)"; null is "null".
std::string Described(const RECT* rect);

namespace detail {

template <>
struct ArgumentTraits<const RECT*> {
    static void Sort(const RECT* rect, std::vector<std::string>& inputs, std::vector<Output>&) {
        inputs.push_back(Described(rect));
    }
};
// Windows are no objects: nothing is released when the call fails.
template <>
struct ArgumentTraits<HWND*> {
    static void Sort(HWND*, std::vector<std::string>&, std::vector<Output>&) {}
};
template <>
struct ArgumentTraits<HWND> {
    static void Sort(HWND window, std::vector<std::string>& inputs, std::vector<Output>&) {
        inputs.emplace_back(window != nullptr ? "window" : "null");
    }
};

} // namespace detail

} // namespace devinst
