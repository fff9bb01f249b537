// The fault plan: which calls on which stand-ins are to go wrong, and how. Read once from the file
// that ZT_FAULTS names; docs/development-installation.md gives its form.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace devinst {

enum class FaultKind {
    Result,  // return the code without doing the work; outputs null
    Error,   // the same, with the description in the error information (or EXCEPINFO)
    Null,    // succeed without doing the work; outputs null
    Empty,   // the same; outputs empty texts and VT_EMPTY
    Text,    // the same; text outputs as given
    Variant, // the same; VARIANT outputs of the named form
    Then,    // do the work, but return the code
    Sleep,   // wait, then do the work
    Leak,    // do the work, and allocate a text that nobody frees
    Exit,    // end the process at once with the code
    Throw,   // throw a C++ exception of no known kind at the caller
};

struct Fault {
    FaultKind kind = FaultKind::Result;
    HRESULT code = S_OK;       // Result, Error, Then; Exit's exit code
    unsigned milliseconds = 0; // Sleep
    std::wstring text;         // Error's description, Text's text, Variant's form
};

struct FaultRule {
    std::string object;    // class name or "*"
    std::string operation; // operation name or "*"
    unsigned first = 1;    // the first matching call that goes wrong
    unsigned last = 1;     // and the last
    Fault fault;
};

// Reads a plan. nullopt when a line has no sense; *complaint then tells which.
std::optional<std::vector<FaultRule>> ParseFaultPlan(std::string_view text, std::string* complaint);

// The fault that this call meets, if any. Counts the call for every rule that matches it; the
// counts are shared by all libraries of the process. A plan that cannot be read ends the process.
std::optional<Fault> NextFault(std::string_view object, std::string_view operation);

// Puts another plan in the place of the one that was read, with all counts at zero. Holds for the
// calling library only.
void ReplaceFaultPlan(std::vector<FaultRule> rules);

} // namespace devinst
