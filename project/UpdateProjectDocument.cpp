#include "project/UpdateProjectDocument.h"

#include "components/Values.h"
#include "project/EditorControl.h"

namespace zt {

namespace {

_bstr_t DocumentName(KernelProject* project) {
    _bstr_t name;
    KernelProject::GetDocumentName::Call(project, name.GetAddress());
    return name;
}

// Returns the name of the document; empty where none could be made, which is no failure.
_bstr_t GenerateDocument(KernelProject* project, const _bstr_t& documentHandler, RunLog& log) {
    KernelProject::GenerateDocument::Call(project, Borrow(documentHandler));
    const _bstr_t name = DocumentName(project);
    if (name.length() != 0)
        log.Log(L"Document '%ws' was generated in the project\n", OrEmpty(name));
    else
        log.Log(L"Failed to generate document\n");
    return name;
}

// Returns whether the document was saved.
bool EditDocument(KernelAdmin* kernel, bool newRevision, RunLog& log) {
    EditorControl editor;
    editor.SetKernel(kernel);
    if (!editor.HasDocument())
        throw L"Error updating document - document could not be loaded into XMED. It can be "
              L"invalid.";
    const bool changed = editor.HasUnsavedChanges();
    if (changed) {
        editor.RunUpdateCommands(newRevision);
        editor.Save();
        log.Log(L"Document in the project was updated\n");
    } else {
        log.Log(L"Document is up-to-date and has not been modified\n");
    }
    editor.Close();
    return changed;
}

} // namespace

bool UpdateDocument(KernelAdmin* kernel, KernelProject* project, const _bstr_t& documentHandler,
                    bool newRevision, RunLog& log) {
    _bstr_t name = DocumentName(project);
    const bool isMissing = name.length() == 0;
    if (isMissing)
        name = GenerateDocument(project, documentHandler, log);
    if (name.length() == 0)
        return false;
    log.Log(L"Updating document '%ws'\n", OrEmpty(name));
    return EditDocument(kernel, newRevision, log) || isMissing;
}

} // namespace zt
