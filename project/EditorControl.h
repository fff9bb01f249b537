#pragma once

#include "framework/Wnd.h"

#include <comdef.h>
#include <wrl/client.h>

namespace zt {

using Microsoft::WRL::ComPtr;

// The authoring system's document editor, hosted in a window that nobody sees. Control and window
// end with this object, the control first.
class EditorControl {
  public:
    // Never raises. Where the window or the control cannot be created, SetKernel raises.
    EditorControl();

    // Gives the control the kernel, whose project it then loads. Raises when it does not take it.
    void SetKernel(IDispatch* kernel);

    // False only when the control says that it has loaded no document; a control that cannot tell
    // is believed to have one.
    bool HasDocument();

    // Whether the control says that its document has changes that are not saved.
    bool HasUnsavedChanges();

    // Sends the commands of an update to the host of the control's document: away with the change
    // marks where that is asked for, then the preparation for the content-management system. Does
    // nothing where no host can be reached. What the commands answer is not looked at.
    void RunUpdateCommands(bool removeChangeMarks);

    // Saves the document into the project. Raises on failure.
    void Save();

    // Lets go of everything, in the order in which it hangs together. Raises when a value that the
    // control handed over cannot be cleared. Left out, the destructor does it.
    void Close();

  private:
    bool ReadFlag(const wchar_t* name, _variant_t& value, bool otherwise);

    HiddenControl m_control;
    ComPtr<IDispatch> m_automation;
    // What was read of the control, cleared at the end only.
    _variant_t m_hasDocument;
    _variant_t m_hasUnsavedChanges;
    // Reached one from the other, held until the document is saved.
    ComPtr<IDispatch> m_editor;
    ComPtr<IDispatch> m_document;
    ComPtr<IDispatch> m_host;
};

} // namespace zt
