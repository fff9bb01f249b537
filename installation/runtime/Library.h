// What turns a set of stand-ins into an in-process COM library: its classes, their registration and
// the library's exports.
#pragma once

#include <windows.h>
#include <objbase.h>

#include <span>

namespace devinst {

class StandIn;

struct ComponentClass {
    const CLSID& classId;
    const wchar_t* progId = nullptr; // null for a class that is created by its identifier only
    const char* className = nullptr; // in the trace: the creation is its operation "CreateInstance"
    StandIn* (*create)() = nullptr;
    // Registered under "Control" with these OLEMISC flags (0: not a control).
    DWORD controlStatus = 0;
};

// Each library defines these two.
std::span<const ComponentClass> LibraryClasses();
extern const char* const LibraryName; // in the trace's closing line

} // namespace devinst
