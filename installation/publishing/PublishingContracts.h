// What the publishing components answer beside the contracts that the program has for them.
#pragma once

#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"

#include <ocidl.h>

namespace devinst {

// clang-format off
// operation                       index  arguments
#define ZT_PERSIST_PROPERTY_BAG(METHOD)                                           \
    METHOD(InitNew,                    4)                                         \
    METHOD(Load,                       5, IPropertyBag*, IErrorLog* /* may be null */) \
    METHOD(Save,                       6, IPropertyBag*, LONG /* clear dirty */, LONG /* save all */)

// operation                      DISPID  kind          result   arguments
#define ZT_VIEWER(OPERATION)                                                      \
    OPERATION(PutValidateNodes,        1, PropertyPut,  Nothing, zt::Value /* a 16-bit integer */) \
    OPERATION(GetValidateNodes,        1, PropertyGet,  Value)
// clang-format on

// IPersistPropertyBag as a contract.
struct PersistPropertyBag : IUnknown {
    static constexpr char Name[] = "PersistPropertyBag";
    ZT_CONTRACT(ZT_PERSIST_PROPERTY_BAG, ZT_EARLY_BOUND)
};

// What stands behind the viewer control; reached by name.
struct Viewer {
    static constexpr char Name[] = "Viewer";
    ZT_CONTRACT(ZT_VIEWER, ZT_LATE_BOUND)
};

} // namespace devinst
