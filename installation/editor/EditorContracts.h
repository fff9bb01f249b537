// What the editor control and the objects behind it answer by name.
#pragma once

#include "installation/runtime/LateBound.h"

namespace devinst {

// clang-format off
// operation                      DISPID  kind                  result   arguments
#define ZT_EDITOR_CONTROL(OPERATION)                                              \
    OPERATION(PutKernel,               1, PropertyPut,          Nothing, zt::Object /* kernel admin */) \
    OPERATION(PutRefKernel,            1, PropertyPutReference, Nothing, zt::Object) \
    OPERATION(GetCmdHasDocument,       2, PropertyGet,          Boolean)          \
    OPERATION(GetCmdSave,              3, PropertyGet,          Boolean /* unsaved changes */) \
    OPERATION(PutCmdSave,              3, PropertyPut,          Nothing, zt::Boolean /* true: save */) \
    OPERATION(GetXMED,                 4, PropertyGet,          Object /* editor */)

#define ZT_EDITOR(OPERATION)                                                      \
    OPERATION(GetDocument,             1, PropertyGet,          Object)

#define ZT_EDITOR_DOCUMENT(OPERATION)                                             \
    OPERATION(GetHost,                 1, PropertyGet,          Object)

#define ZT_EDITOR_HOST(OPERATION)                                                 \
    OPERATION(Run,                     1, Method,               Nothing, zt::Text /* command */)
// clang-format on

struct EditorControl {
    static constexpr char Name[] = "EditorControl";
    static constexpr wchar_t ProgId[] = L"KV.XMedCtrl.1";
    ZT_CONTRACT(ZT_EDITOR_CONTROL, ZT_LATE_BOUND)
};

struct Editor {
    static constexpr char Name[] = "Editor";
    ZT_CONTRACT(ZT_EDITOR, ZT_LATE_BOUND)
};

struct EditorDocument {
    static constexpr char Name[] = "EditorDocument";
    ZT_CONTRACT(ZT_EDITOR_DOCUMENT, ZT_LATE_BOUND)
};

struct EditorHost {
    static constexpr char Name[] = "EditorHost";
    ZT_CONTRACT(ZT_EDITOR_HOST, ZT_LATE_BOUND)
};

} // namespace devinst
