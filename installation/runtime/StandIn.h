// Base of every stand-in: one COM object with a label for the trace, counted while it lives.
#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>
#include <vector>

namespace devinst {

class StandIn;

// One interface of a stand-in as its callers see it: a pointer to a function table. Faces are
// never freed, so that a call on an object that is gone is caught instead of running wild.
struct Face {
    const void* const* functions;
    StandIn* owner; // null once the object is gone
};

class StandIn {
  public:
    // className stands in the trace and in fault plans. The reference count starts at 1.
    explicit StandIn(const char* className);
    StandIn(const StandIn&) = delete;
    StandIn& operator=(const StandIn&) = delete;

    ULONG AddReference();
    // Deletes the object with its last reference.
    ULONG ReleaseReference();
    // Traced as "QueryInterface". Gives the interface that was registered with AddFace.
    HRESULT Query(REFIID iid, void** object);
    // The first interface, which stands for the object's identity. No reference is taken.
    IUnknown* Identity() const;

    const char* ClassName() const { return m_className; }
    // "KernelProject#2": class and running number.
    std::string Label() const;

    // GetIDsOfNames and Invoke of objects that answer IDispatch. Without a table of late-bound
    // operations (see LateBound.h) no name is known and every Invoke ends the process.
    virtual HRESULT FindDispatchName(const wchar_t* name, DISPID* id);
    virtual HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                                   EXCEPINFO* exception);

  protected:
    virtual ~StandIn();

    // Makes an interface of the object known. The function table's first three entries are those
    // of UnknownFunctions. The first face is the object's identity.
    Face* AddFace(REFIID iid, const void* const* functions);
    // Interfaces that are written as ordinary C++ classes (controls, say).
    void AddInterface(REFIID iid, void* pointer);

  private:
    struct Interface {
        IID iid;
        void* pointer;
        Face* face; // null for AddInterface
    };

    const char* m_className;
    unsigned m_number;
    ULONG m_references = 1;
    std::vector<Interface> m_interfaces;
};

// The owner of a face; a call on an object that is gone fails loudly.
StandIn& OwnerOf(Face* face, const char* operation);

// The live stand-in that an interface pointer belongs to, null for any other pointer.
StandIn* StandInOf(const void* pointer);

// The label of the live stand-in that an interface pointer belongs to, "null", or "object" for one
// that is not a stand-in's.
std::string LabelOf(const void* pointer);

// Function table entries that every interface begins with, and those of IDispatch behind them.
extern const void* const UnknownFunctions[3];
extern const void* const DispatchFunctions[4];

} // namespace devinst
