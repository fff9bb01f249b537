// IObjectWithSite as a contract, for stand-ins that the program gives its site.
#pragma once

#include "components/Contract.h"

#include <ocidl.h>

namespace devinst {

// clang-format off
#define ZT_OBJECT_WITH_SITE(METHOD)                            \
    METHOD(SetSite, 3, IUnknown*)                              \
    METHOD(GetSite, 4, REFIID, void**)
// clang-format on

struct ObjectWithSite : IUnknown {
    static constexpr char Name[] = "ObjectWithSite";
    ZT_CONTRACT(ZT_OBJECT_WITH_SITE, ZT_EARLY_BOUND)
};

} // namespace devinst
