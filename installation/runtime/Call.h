// One call on a stand-in: counted against the fault plan, performed, traced.
#pragma once

#include "installation/runtime/StandIn.h"

#include <windows.h>
#include <oleauto.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace devinst {

// A failure inside a stand-in: the result code, and the description that the caller finds in the
// error information (or in the EXCEPINFO of an automation call).
struct ComFailure {
    HRESULT code;
    std::wstring description;
};

// How an argument or output stands in the trace.
std::string Described(LONG value);
std::string Described(DWORD value);
std::string Described(VARIANT_BOOL value);
std::string Described(const wchar_t* text); // also BSTR; null is "null"
std::string Described(const VARIANT& value);
std::string Described(REFIID iid);
std::string Described(const void* pointer); // interfaces

// The key of an early-bound call in the trace: "[66]".
std::string MethodKey(std::size_t index);

// Where a call leaves a result. Outputs are emptied before the call.
struct Output {
    enum class Kind { Text, Variant, Interface, Number };
    Kind kind = Kind::Text;
    void* place = nullptr; // may be null: the caller does not want it
    // What an automation call gives inside a VARIANT: the type that "empty" and "null" mean there.
    VARTYPE type = VT_EMPTY;

    static Output Text(BSTR* place) { return {Kind::Text, place}; }
    static Output Variant(VARIANT* place, VARTYPE type = VT_EMPTY) {
        return {Kind::Variant, place, type};
    }
    static Output Interface(IUnknown** place) { return {Kind::Interface, place}; }
    static Output Number(LONG* place) { return {Kind::Number, place}; }
};

struct CallSite {
    // For calls on objects; for calls without one (creation) the label is the class name.
    CallSite(const StandIn& object, const char* operation, std::string key)
        : className(object.ClassName()), label(object.Label()), operation(operation),
          key(std::move(key)) {}
    CallSite(const char* className, const char* operation)
        : className(className), label(className), operation(operation) {}

    const char* className;
    std::string label;
    const char* operation;
    std::string key; // "[66]", "[get 9]" or empty
};

// Performs one call: applies the plan's fault or runs the work, and writes the trace line
//   Label Operation [key] (arguments) -> result, outputs
// The work's exceptions, and an "error" fault, go into *exception and give DISP_E_EXCEPTION;
// without exception they go into the thread's error information and give their own code. ComFailure
// brings its code and description; std::exception gives E_UNEXPECTED; any but these and _com_error
// ends the process.
HRESULT Perform(const CallSite& site, const std::vector<std::string>& arguments,
                const std::vector<Output>& outputs, const std::function<HRESULT()>& work,
                EXCEPINFO* exception = nullptr);

// Writes a trace line for a call that a stand-in makes on an object of the program's.
void TraceCallback(const char* operation, const std::vector<std::string>& arguments, HRESULT result,
                   const std::vector<std::string>& outputs = {});

} // namespace devinst
