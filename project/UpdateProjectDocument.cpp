#include "project/UpdateProjectDocument.h"

#include "app/ZTInvisible.h"
#include "components/Values.h"
#include "project/EditorControl.h"

namespace zt {

namespace {

_bstr_t DocumentName(CZTInvisible& app) {
    _bstr_t name;
    KernelProject::GetDocumentName::Call(app.m_pKernelProject.Get(), name.GetAddress());
    return name;
}

// Returns the name of the document; empty where none could be made, which is no failure.
_bstr_t GenerateDocument(CZTInvisible& app) {
    KernelProject::GenerateDocument::Call(app.m_pKernelProject.Get(),
                                          Borrow(app.m_bstrDocumentHandler));
    const _bstr_t name = DocumentName(app);
    if (name.length() != 0)
        app.Log(L"Document '%ws' was generated in the project\n", OrEmpty(name));
    else
        app.Log(L"Failed to generate document\n");
    return name;
}

// Returns whether the document was saved.
bool EditDocument(CZTInvisible& app) {
    EditorControl editor;
    editor.SetKernel(app.m_pKernelAdmin.Get());
    if (!editor.HasDocument())
        throw L"Error updating document - document could not be loaded into XMED. It can be "
              L"invalid.";
    const bool changed = editor.HasUnsavedChanges();
    if (changed) {
        editor.RunUpdateCommands(app.m_bNewRevision);
        editor.Save();
        app.Log(L"Document in the project was updated\n");
    } else {
        app.Log(L"Document is up-to-date and has not been modified\n");
    }
    editor.Close();
    return changed;
}

} // namespace

bool UpdateProjectDocument(CZTInvisible& app) {
    _bstr_t name = DocumentName(app);
    const bool isMissing = name.length() == 0;
    if (isMissing)
        name = GenerateDocument(app);
    if (name.length() == 0)
        return false;
    app.Log(L"Updating document '%ws'\n", OrEmpty(name));
    return EditDocument(app) || isMissing;
}

} // namespace zt
