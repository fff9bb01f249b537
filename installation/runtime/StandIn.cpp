#include "installation/runtime/StandIn.h"

#include "installation/runtime/Call.h"
#include "installation/runtime/LiveObjects.h"
#include "installation/runtime/Trace.h"

#include <algorithm>
#include <deque>
#include <map>

namespace devinst {

namespace {

struct Registry {
    std::deque<Face> faces;
    std::map<const void*, StandIn*> owners;
    std::map<std::string, unsigned> numbers;
    std::map<std::string, int> live;
};

// Lives until the process ends: objects may be released after static destruction has begun.
Registry& TheRegistry() {
    static Registry* const registry = new Registry;
    return *registry;
}

HRESULT STDMETHODCALLTYPE QueryInterfaceOf(Face* face, REFIID iid, void** object) {
    return OwnerOf(face, "QueryInterface").Query(iid, object);
}

ULONG STDMETHODCALLTYPE AddRefOf(Face* face) {
    return OwnerOf(face, "AddRef").AddReference();
}

ULONG STDMETHODCALLTYPE ReleaseOf(Face* face) {
    return OwnerOf(face, "Release").ReleaseReference();
}

HRESULT STDMETHODCALLTYPE GetTypeInfoCountOf(Face* face, UINT* count) {
    *count = 0;
    return Perform({OwnerOf(face, "GetTypeInfoCount"), "GetTypeInfoCount", ""}, {}, {},
                   [] { return S_OK; });
}

HRESULT STDMETHODCALLTYPE GetTypeInfoOf(Face* face, UINT, LCID, ITypeInfo** info) {
    *info = nullptr;
    return Perform({OwnerOf(face, "GetTypeInfo"), "GetTypeInfo", ""}, {}, {},
                   [] { return E_NOTIMPL; });
}

HRESULT STDMETHODCALLTYPE GetIDsOfNamesOf(Face* face, REFIID, LPOLESTR* names, UINT count, LCID,
                                          DISPID* ids) {
    StandIn& owner = OwnerOf(face, "GetIDsOfNames");
    const HRESULT result =
        Perform({owner, "GetIDsOfNames", ""}, {Described(names[0])}, {Output::Number(ids)}, [&] {
            return count == 1 ? owner.FindDispatchName(names[0], ids) : DISP_E_UNKNOWNNAME;
        });
    if (FAILED(result))
        std::fill_n(ids, count, DISPID_UNKNOWN);
    return result;
}

HRESULT STDMETHODCALLTYPE InvokeOf(Face* face, DISPID id, REFIID, LCID, WORD kind,
                                   DISPPARAMS* parameters, VARIANT* result, EXCEPINFO* exception,
                                   UINT*) {
    return OwnerOf(face, "Invoke").InvokeDispatch(id, kind, *parameters, result, exception);
}

} // namespace

const void* const UnknownFunctions[3] = {reinterpret_cast<const void*>(&QueryInterfaceOf),
                                         reinterpret_cast<const void*>(&AddRefOf),
                                         reinterpret_cast<const void*>(&ReleaseOf)};
const void* const DispatchFunctions[4] = {reinterpret_cast<const void*>(&GetTypeInfoCountOf),
                                          reinterpret_cast<const void*>(&GetTypeInfoOf),
                                          reinterpret_cast<const void*>(&GetIDsOfNamesOf),
                                          reinterpret_cast<const void*>(&InvokeOf)};

StandIn::StandIn(const char* className)
    : m_className(className), m_number(++TheRegistry().numbers[className]) {
    CountLive(className, +1);
}

StandIn::~StandIn() {
    for (const Interface& known : m_interfaces) {
        if (known.face != nullptr)
            known.face->owner = nullptr;
        TheRegistry().owners.erase(known.pointer);
    }
    CountLive(m_className, -1);
}

ULONG StandIn::AddReference() {
    return ++m_references;
}

ULONG StandIn::ReleaseReference() {
    const ULONG left = --m_references;
    if (left == 0)
        delete this;
    return left;
}

HRESULT StandIn::Query(REFIID iid, void** object) {
    if (object == nullptr)
        return E_POINTER;
    *object = nullptr;
    return Perform({*this, "QueryInterface", ""}, {Described(iid)},
                   {Output::Interface(reinterpret_cast<IUnknown**>(object))}, [&] {
                       for (const Interface& known : m_interfaces) {
                           if (known.iid == iid || iid == IID_IUnknown) {
                               *object = known.pointer;
                               AddReference();
                               return S_OK;
                           }
                       }
                       return E_NOINTERFACE;
                   });
}

IUnknown* StandIn::Identity() const {
    return static_cast<IUnknown*>(m_interfaces.front().pointer);
}

std::string StandIn::Label() const {
    return std::string(m_className) + "#" + std::to_string(m_number);
}

HRESULT StandIn::FindDispatchName(const wchar_t*, DISPID*) {
    return DISP_E_UNKNOWNNAME;
}

HRESULT StandIn::InvokeDispatch(DISPID id, WORD, DISPPARAMS&, VARIANT*, EXCEPINFO*) {
    FailLoudly(Label() + " Invoke " + std::to_string(id) + ", which no table lists");
}

Face* StandIn::AddFace(REFIID iid, const void* const* functions) {
    Face& face = TheRegistry().faces.emplace_back(Face{functions, this});
    m_interfaces.push_back({iid, &face, &face});
    TheRegistry().owners[&face] = this;
    return &face;
}

void StandIn::AddInterface(REFIID iid, void* pointer) {
    m_interfaces.push_back({iid, pointer, nullptr});
    TheRegistry().owners[pointer] = this;
}

StandIn& OwnerOf(Face* face, const char* operation) {
    if (face->owner == nullptr)
        FailLoudly(std::string(operation) + " on an object that was released");
    return *face->owner;
}

StandIn* StandInOf(const void* pointer) {
    const auto& owners = TheRegistry().owners;
    const auto found = owners.find(pointer);
    return found != owners.end() ? found->second : nullptr;
}

std::string LabelOf(const void* pointer) {
    if (pointer == nullptr)
        return "null";
    const StandIn* const standIn = StandInOf(pointer);
    return standIn != nullptr ? standIn->Label() : "object";
}

void CountLive(const char* className, int change) {
    TheRegistry().live[className] += change;
}

void TraceLiveObjects(const char* library) {
    std::string classes;
    for (const auto& [className, count] : TheRegistry().live) {
        if (count != 0)
            classes += (classes.empty() ? "" : ", ") + className + " " + std::to_string(count);
    }
    TraceLine(std::string("live ") + library + ": " + (classes.empty() ? "0" : classes));
}

} // namespace devinst
