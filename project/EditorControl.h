#pragma once

#include "framework/Wnd.h"
#include "support/ComPtr.h"

#include <comdef.h>

namespace zt {

// The authoring system's document editor, hosted in a window that nobody sees. Control and window
// end with this object, the control first.
class EditorControl {
  public:
    // Never raises. Where the window or the control cannot be created, SetKernel raises.
    EditorControl();

    // Gives the control the kernel, whose project it then loads. Raises when it does not take it.
    void SetKernel(IDispatch* kernel);

    // False only when the control reports that it has loaded no document; one that cannot report it
    // is taken to have one.
    bool HasDocument();

    // Whether the control reports that its document has changes that are not saved.
    bool HasUnsavedChanges();

    // Sends the commands of an update to the host of the control's document: to remove the change
    // marks where that is asked for, then to prepare for the content-management system. Does
    // nothing where no host can be reached. The commands' results are ignored.
    void RunUpdateCommands(bool removeChangeMarks);

    // Saves the document into the project. Raises on failure.
    void Save();

    // Releases everything, in the order of dependence. Raises when a value that the
    // control handed over cannot be cleared. Without a call, the destructor does it.
    void Close();

  private:
    bool ReadFlag(const wchar_t* name, _variant_t& value, bool otherwise);

    HiddenControl m_control;
    ComPtr<IDispatch> m_automation;
    // What was read from the control, cleared at the end only.
    _variant_t m_hasDocument;
    _variant_t m_hasUnsavedChanges;
    // Reached one from the other, held until the document is saved.
    ComPtr<IDispatch> m_editor;
    ComPtr<IDispatch> m_document;
    ComPtr<IDispatch> m_host;
};

} // namespace zt
