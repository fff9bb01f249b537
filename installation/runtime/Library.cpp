// The exports of a library of stand-ins.
#include "installation/runtime/Library.h"

#include "installation/runtime/Allocations.h"
#include "installation/runtime/ClassObject.h"
#include "installation/runtime/LiveObjects.h"
#include "installation/runtime/Registration.h"

using namespace devinst;

namespace {

HINSTANCE libraryInstance = nullptr;

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
    libraryInstance = instance;
    if (reason == DLL_PROCESS_ATTACH)
        StartCountingAllocations();
    if (reason == DLL_PROCESS_DETACH) {
        TraceLiveObjects(LibraryName);
        TraceAllocations();
    }
    return TRUE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI
    DllGetClassObject(REFCLSID classId, REFIID iid, void** object) {
    *object = nullptr;
    for (const ComponentClass& known : LibraryClasses()) {
        if (known.classId == classId)
            return ClassObjectOf(known)->QueryInterface(iid, object);
    }
    return CLASS_E_CLASSNOTAVAILABLE;
}

// The libraries stay loaded until the process ends, so that their closing line is the last word.
extern "C" __declspec(dllexport) HRESULT WINAPI DllCanUnloadNow() {
    return S_FALSE;
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllRegisterServer() {
    return RegisterClasses(libraryInstance, LibraryClasses());
}

extern "C" __declspec(dllexport) HRESULT WINAPI DllUnregisterServer() {
    return UnregisterClasses(LibraryClasses());
}
