// What the sample handlers answer beside the contracts that the program has for handlers.
#pragma once

#include "installation/runtime/LateBound.h"

namespace devinst {

// clang-format off
// operation                      DISPID  kind                  result   arguments
#define ZT_SAMPLE_EDIT(OPERATION)                                                 \
    OPERATION(Touch,                   1, Method,               Value,   zt::Object /* kernel admin */) \
    OPERATION(Refuse,                  2, Method,               Value,   zt::Object) \
    OPERATION(Nothing,                 3, Method,               Value,   zt::Object) \
    OPERATION(Raise,                   4, Method,               Value,   zt::Object) \
    OPERATION(RaiseSilently,           5, Method,               Value,   zt::Object) \
    OPERATION(Count,                   6, Method,               Value,   zt::Object) \
    OPERATION(Zero,                    7, Method,               Value,   zt::Object)

#define ZT_KERNEL_USER(OPERATION)                                                 \
    OPERATION(PutKernel,               1, PropertyPut,          Nothing, zt::Object /* kernel admin */) \
    OPERATION(PutRefKernel,            1, PropertyPutReference, Nothing, zt::Object)
// clang-format on

// An edit handler with a method for every way in which one can end.
struct SampleEditMethods {
    static constexpr char Name[] = "SampleEdit";
    ZT_CONTRACT(ZT_SAMPLE_EDIT, ZT_LATE_BOUND)
};

// A handler that is given the kernel when its specification is loaded.
struct KernelUser {
    static constexpr char Name[] = "KernelUser";
    ZT_CONTRACT(ZT_KERNEL_USER, ZT_LATE_BOUND)
};

} // namespace devinst
