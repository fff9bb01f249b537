// The administration component "KV.Admin", the configuration that it opens and the project
// archives. Late-bound.
#pragma once

#include "components/Contract.h"

namespace zt {

// clang-format off
// operation                      DISPID  kind          result   arguments
#define ZT_ADMINISTRATION(OPERATION)                                              \
    OPERATION(OpenArchive,             2, Method,       Object,  Text /* path */, Int32 /* mode: 2 read, 0 create */) \
    OPERATION(OpenConfiguration,       6, Method,       Object,  Text /* project name */)

#define ZT_CONFIGURATION(OPERATION)                                               \
    OPERATION(WorkFolder,              5, PropertyGet,  Text)                     \
    OPERATION(ImportedProjects,        9, PropertyGet,  Value)                    \
    OPERATION(ConfigurationFile,      10, PropertyGet,  Text)                     \
    OPERATION(ClientName,             11, PropertyPut,  Nothing, Text)            \
    OPERATION(Open,                   12, Method,       Nothing)                  \
    OPERATION(Close,                  13, Method,       Nothing, Boolean /* true */) \
    OPERATION(ExportProject,          14, Method,       Object,  Text /* configuration key */, Int32 /* -1 */) \
    OPERATION(ImportProject,          15, Method,       Nothing, Object /* of ExtractProject */)

#define ZT_ARCHIVE(OPERATION)                                                     \
    OPERATION(Projects,                1, PropertyGet,  Value)                    \
    OPERATION(ExtractProject,          2, Method,       Object,  Text /* name */, Text /* representations folder */) \
    OPERATION(AddProject,              3, Method,       Nothing, Object /* of ExportProject */, Text /* stored name */, Text /* representations folder */)
// clang-format on

struct Administration {
    static constexpr char Name[] = "Administration";
    static constexpr wchar_t ProgId[] = L"KV.Admin";
    ZT_CONTRACT(ZT_ADMINISTRATION, ZT_LATE_BOUND)
};

// ImportedProjects and Projects give a two-dimensional VT_ARRAY | VT_BSTR. The elements in use are
// at the indices below, in the order in which SafeArrayGetElement takes them.
struct Configuration {
    static constexpr char Name[] = "Configuration";
    ZT_CONTRACT(ZT_CONFIGURATION, ZT_LATE_BOUND)
};

struct Archive {
    static constexpr char Name[] = "Archive";
    ZT_CONTRACT(ZT_ARCHIVE, ZT_LATE_BOUND)
};

} // namespace zt
