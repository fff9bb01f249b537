// What the kernel's objects answer to scripts and handlers, by name: the installation's own, not
// used by the program.
#pragma once

#include "components/Contract.h"

namespace devinst {

// clang-format off
// operation                      DISPID  kind              result      arguments
#define ZT_KERNEL_SCRIPTING(OPERATION)                                                   \
    OPERATION(CurrentProject,       1001, PropertyGet,      Object /* null without one */)

#define ZT_PROJECT_SCRIPTING(OPERATION)                                                  \
    OPERATION(GetName,              1001, PropertyGet,      Text)                        \
    OPERATION(SetMetadata,          1002, Method,           Nothing,    ::zt::Text, ::zt::Text) \
    OPERATION(GetMetadata,          1003, Method,           Text,       ::zt::Text)      \
    OPERATION(GetRevision,          1004, PropertyGet,      Text)                        \
    OPERATION(GetDocumentPath,      1005, PropertyGet,      Text /* empty without a document */) \
    OPERATION(GetContent,           1006, PropertyGet,      Text /* XML */)              \
    OPERATION(GetFolder,            1007, PropertyGet,      Text)                        \
    OPERATION(GetRepresentations,   1008, PropertyGet,      Text /* folder */)

#define ZT_REFERENCED_OBJECT(OPERATION)                                                  \
    OPERATION(GetId,                1001, PropertyGet,      Text)                        \
    OPERATION(GetName,              1002, PropertyGet,      Text)                        \
    OPERATION(GetPartNumber,        1003, PropertyGet,      Text)                        \
    OPERATION(GetRepresentation,    1004, PropertyGet,      Text /* file name */)
// clang-format on

struct KernelScripting {
    ZT_CONTRACT(ZT_KERNEL_SCRIPTING, ZT_LATE_BOUND)
};

struct ProjectScripting {
    ZT_CONTRACT(ZT_PROJECT_SCRIPTING, ZT_LATE_BOUND)
};

// What a node of a project's tree refers to.
struct ReferencedObjectScripting {
    ZT_CONTRACT(ZT_REFERENCED_OBJECT, ZT_LATE_BOUND)
};

} // namespace devinst
