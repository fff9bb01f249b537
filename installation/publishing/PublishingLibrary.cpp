// The classes of zt-publishing.dll.
#include "components/ComponentIds.h"
#include "installation/publishing/ArchiveComponentObject.h"
#include "installation/publishing/Component3DObject.h"
#include "installation/publishing/ExporterObject.h"
#include "installation/publishing/ViewerObjects.h"
#include "installation/runtime/Library.h"

namespace devinst {

namespace {

constexpr CLSID ClassComponent3D = {
    0x9d5e6b42, 0x17c8, 0x4b0f, {0xa3, 0x6d, 0x58, 0x0c, 0xe1, 0x94, 0x27, 0xfb}};
constexpr CLSID ClassViewerControl = {
    0x2b84f0d6, 0xe953, 0x4a71, {0x8c, 0x1e, 0x36, 0xd7, 0x0a, 0x5f, 0xb2, 0x69}};

template <typename T>
StandIn* Create() {
    return new T;
}

} // namespace

const char* const LibraryName = "zt-publishing.dll";

std::span<const ComponentClass> LibraryClasses() {
    static const ComponentClass classes[] = {
        {CLSID_Exporter, nullptr, zt::Exporter::Name, Create<ExporterObject>},
        {CLSID_Archive, nullptr, zt::ArchiveComponent::Name, Create<ArchiveComponentObject>},
        {ClassComponent3D, zt::Component3D::ProgId, zt::Component3D::Name,
         Create<Component3DObject>},
        {ClassViewerControl, zt::ViewerControl::ProgId, zt::ViewerControl::Name,
         Create<ViewerControlObject>, WindowedControl::Status},
    };
    return classes;
}

} // namespace devinst
