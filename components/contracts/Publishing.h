// The components that publish a project: exporter, 3D component with its command target, viewer
// control, the project's node tree and the archive component. Early-bound but for the viewer
// control; the indices of all interfaces but the 3D command target count the methods of IDispatch.
#pragma once

#include "components/contracts/Kernel.h"

namespace zt {

// clang-format off
// operation                       index  arguments
#define ZT_EXPORTER(METHOD)                                                       \
    METHOD(PutDestinationFolder,      10, BSTR)                                   \
    METHOD(Export,                    11)                                         \
    METHOD(PutAxesModelPath,          17, BSTR)                                   \
    METHOD(PutKernel,                 35, KernelAdmin*)                           \
    METHOD(PutSpecificationFileName,  39, BSTR)                                   \
    METHOD(PutAxesPosition,           45, LONG /* x low, y high 16 bits */)       \
    METHOD(PutOptionA,                46, LONG /* 0 */)                           \
    METHOD(PutLanguage,               51, BSTR)                                   \
    METHOD(PutOptionB,                52, LONG /* 0 */)

#define ZT_3D_COMPONENT(METHOD)                                                   \
    METHOD(PutViewer,                  7, IDispatch* /* null clears it */)        \
    METHOD(PutKernel,                  8, KernelAdmin*)                           \
    METHOD(PutLearningMode,           50, VARIANT_BOOL)                           \
    METHOD(PutResourceTag,            53, BSTR /* "#res#" */)                     \
    METHOD(PutAxesFolder,             54, BSTR)                                   \
    METHOD(PutSpecificationFileName,  61, BSTR)                                   \
    METHOD(PutOptionC,                64, LONG /* 0 */)                           \
    METHOD(PutLanguage,               68, BSTR)                                   \
    METHOD(PublishView,               79, BSTR /* destination */, BSTR /* first name */, BSTR /* second name */, LONG /* 1 */, LONG /* 0 */, VARIANT /* I4 0 */) \
    METHOD(PublishText,               85, KernelAdmin*, BSTR /* destination */, BSTR /* name */, VARIANT /* I4 0 */)

#define ZT_3D_COMMAND_TARGET(METHOD)                                              \
    METHOD(Execute,                    3, LONG /* 0 */, const VARIANT* /* command, I4 */, const VARIANT* /* argument or null */)

#define ZT_NODE_TREE(METHOD)                                                      \
    METHOD(GetItem,                    7, VARIANT /* I4 0: the first */, IUnknown**) \
    METHOD(GetChildren,                9, IEnumUnknown**)

#define ZT_PROJECT_NODE(METHOD)                                                   \
    METHOD(GetChildren,                9, IEnumUnknown**)                         \
    METHOD(GetAttachedObject,         20, IUnknown** /* null if none */)

#define ZT_ARCHIVE_COMPONENT(METHOD)                                              \
    METHOD(Create,                     7, BSTR /* path */, LONG /* mode 2 */)     \
    METHOD(Close,                      8)                                         \
    METHOD(AddFile,                    9, BSTR /* full path */, BSTR /* name in the archive */, VARIANT_BOOL /* -1 */)

// operation                      DISPID  kind          result   arguments
#define ZT_VIEWER_CONTROL(OPERATION)                                              \
    OPERATION(Viewer,                  2, PropertyGet,  Object)
// clang-format on

// Class CLSID_Exporter, interface IID_Exporter; dual.
struct Exporter : IDispatch {
    static constexpr char Name[] = "Exporter";
    static constexpr const IID& Iid = IID_Exporter;
    ZT_CONTRACT(ZT_EXPORTER, ZT_EARLY_BOUND)
};

// Interface IID_3DComponent; dual.
struct Component3D : IDispatch {
    static constexpr char Name[] = "Component3D";
    static constexpr const IID& Iid = IID_3DComponent;
    static constexpr wchar_t ProgId[] = L"KV.3D.1";
    ZT_CONTRACT(ZT_3D_COMPONENT, ZT_EARLY_BOUND)
};

// Interface IID_3DCommandTarget, which a 3D component may have; derives from IUnknown only.
struct CommandTarget3D : IUnknown {
    static constexpr char Name[] = "CommandTarget3D";
    static constexpr const IID& Iid = IID_3DCommandTarget;
    ZT_CONTRACT(ZT_3D_COMMAND_TARGET, ZT_EARLY_BOUND)
};

// Root of a project's node tree, as KernelProject hands it out; dual.
struct NodeTree : IDispatch {
    static constexpr char Name[] = "NodeTree";
    ZT_CONTRACT(ZT_NODE_TREE, ZT_EARLY_BOUND)
};

// Interface IID_ProjectNode; dual.
struct ProjectNode : IDispatch {
    static constexpr char Name[] = "ProjectNode";
    static constexpr const IID& Iid = IID_ProjectNode;
    ZT_CONTRACT(ZT_PROJECT_NODE, ZT_EARLY_BOUND)
};

// Class CLSID_Archive, interface IID_Archive; dual. Not the Archive that holds projects.
struct ArchiveComponent : IDispatch {
    static constexpr char Name[] = "ArchiveComponent";
    static constexpr const IID& Iid = IID_Archive;
    ZT_CONTRACT(ZT_ARCHIVE_COMPONENT, ZT_EARLY_BOUND)
};

// Hosted as a control; the viewer itself has the property "ValidateNodes", put by name.
struct ViewerControl {
    static constexpr char Name[] = "ViewerControl";
    static constexpr wchar_t ProgId[] = L"Faldera.Control.1";
    ZT_CONTRACT(ZT_VIEWER_CONTROL, ZT_LATE_BOUND)
};

} // namespace zt
