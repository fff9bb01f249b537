// The classes of zt-editor.dll.
#include "installation/editor/EditorControlObject.h"
#include "installation/runtime/Library.h"

namespace devinst {

namespace {

constexpr CLSID ClassEditorControl = {
    0x4c1de9a7, 0x63b0, 0x4f2a, {0x8e, 0x57, 0x21, 0x90, 0xbc, 0x6d, 0x0f, 0x38}};

StandIn* CreateEditorControl() {
    return new EditorControlObject;
}

} // namespace

const char* const LibraryName = "zt-editor.dll";

std::span<const ComponentClass> LibraryClasses() {
    static const ComponentClass classes[] = {
        {ClassEditorControl, EditorControl::ProgId, EditorControl::Name, CreateEditorControl,
         WindowedControl::Status},
    };
    return classes;
}

} // namespace devinst
