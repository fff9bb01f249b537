#include "project/ChangeSteps.h"

#include "app/ZTInvisible.h"
#include "components/Values.h"
#include "project/DocumentLocation.h"

namespace zt {

bool RenameProject(CZTInvisible& app, const std::wstring& newName) {
    const _bstr_t name = MakeText(newName);
    if (KernelProject::Rename::Call(app.m_pKernelProject.Get(), Borrow(name)) != S_OK)
        return false;
    app.Log(L"Project name changed to '%s'\n", newName.c_str());
    return true;
}

bool AttachDocument(CZTInvisible& app, const std::wstring& documentPath) {
    const DocumentLocation document = LocateDocument(documentPath, app.m_strExchangePath);
    app.m_strDocumentFolder = document.folder;
    const _bstr_t fullPath = MakeText(document.fullPath);
    const HRESULT attached = KernelProject::AttachDocument::Call(
        app.m_pKernelProject.Get(), Borrow(fullPath), Borrow(app.m_bstrDocumentHandler));
    if (FAILED(attached))
        throw CString(L"Error attaching document: ") + document.fullPath.c_str();
    app.Log(L"Document '%s' attached to the project\n", documentPath.c_str());
    return true;
}

bool StartNewRevision(CZTInvisible& app) {
    KernelProject::StartNewRevision::Call(app.m_pKernelProject.Get());
    app.Log(L"New revision of the project started\n");
    return true;
}

} // namespace zt
