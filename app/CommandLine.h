// The command line's grammar and what a run takes from it.
#pragma once

#include "project/ProjectRequest.h"

#include <span>
#include <string>
#include <string_view>

namespace zt {

// What the arguments ask for. A text stays empty where its keyword was not given.
struct CommandLine {
    std::wstring projectFile;    // IN
    std::wstring exchangePath;   // EXCHANGEPATH
    std::wstring logFile;        // LOG
    std::wstring statusId;       // M
    std::wstring editProgId;     // EDIT, first value
    std::wstring editMethod;     // EDIT, second value
    std::wstring newProjectName; // PROJECTNAME
    std::wstring document;       // DM
    MetadataMap metadata;        // META and ADDMETA; the first pair of a name stays
    bool notify = false;         // S
    bool package = false;        // KVB
    bool publish = false;        // PUB, KVB
    bool updateDocument = false; // UPDATEDOC
    bool newRevision = false;    // NR
};

// arguments are those behind the program's own name. Nothing is an error: an argument that is no
// keyword, or a keyword without enough arguments behind it, is skipped.
CommandLine ParseCommandLine(std::span<const std::wstring_view> arguments);

// Whether the run has to open the project. A document update or a new revision alone is no reason.
bool HasProjectWork(const CommandLine& line);

// Where the project file stands and what the project is called.
struct ProjectLocation {
    bool hasFolder = false;
    std::wstring folder; // up to the last backslash, without it; empty for a file in the root
    std::wstring name;   // without folder and extension
};

ProjectLocation LocateProject(std::wstring_view projectFile);

// The part of the process's whole command line that stands behind the program's path, with the
// blank that parts them. Empty when the path has no end.
std::wstring_view ArgumentsOf(std::wstring_view wholeCommandLine);

} // namespace zt
