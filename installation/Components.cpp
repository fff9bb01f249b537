// The classes of zt-components.dll.
#include "components/ComponentIds.h"
#include "installation/administration/AdministrationObject.h"
#include "installation/kernel/KernelAdminObject.h"
#include "installation/runtime/Library.h"

namespace devinst {

namespace {

// The identifiers of classes that the program creates by ProgID are this installation's own.
constexpr CLSID ClassAdministration = {
    0x7a3c5b1e, 0x2d4f, 0x4c60, {0x9b, 0x1a, 0x5e, 0x08, 0xd2, 0x77, 0x43, 0x91}};

template <typename T>
StandIn* Create() {
    return new T;
}

} // namespace

const char* const LibraryName = "zt-components.dll";

std::span<const ComponentClass> LibraryClasses() {
    static const ComponentClass classes[] = {
        {CLSID_KernelAdmin, nullptr, zt::KernelAdmin::Name, Create<KernelAdminObject>},
        {ClassAdministration, zt::Administration::ProgId, zt::Administration::Name,
         Create<AdministrationObject>},
    };
    return classes;
}

} // namespace devinst
