// Metadata that the command line asks for.
#pragma once

#include <map>
#include <string>

namespace zt {

struct MetadataEntry {
    std::wstring value;
    // True: overwrite what the project has. False: set it only where the project has no value.
    bool bSet = false;
};

// By name, in ascending order of the characters' codes; names are case-sensitive.
using MetadataMap = std::map<std::wstring, MetadataEntry>;

} // namespace zt
