// What a run is asked to do with one project, and the names that follow from it. No Windows call.
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

// Empty texts ask for nothing.
struct ProjectRequest {
    std::wstring exchangePath; // where the project's archive lies; no trailing backslash
    std::wstring projectName;  // without folder and extension
    MetadataMap metadata;
    std::wstring newProjectName;
    std::wstring editProgId;
    std::wstring editMethod;
    std::wstring documentPath;
    bool updateDocument = false;
    bool newRevision = false;
    bool publish = false;
};

// The project's archive in the exchange folder.
std::wstring ArchiveFileName(const std::wstring& projectName);

struct DocumentLocation {
    std::wstring folder; // without a trailing backslash
    std::wstring fullPath;
};

// Where a document that the command line names lies: a path with a backslash stands for itself; a
// bare name lies in the exchange folder.
DocumentLocation LocateDocument(const std::wstring& documentPath,
                                const std::wstring& exchangeFolder);

} // namespace zt
