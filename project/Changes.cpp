#include "project/Changes.h"

#include "components/ByName.h"
#include "components/Creation.h"
#include "components/Values.h"
#include "framework/String.h"
#include "project/Pipeline.h"

namespace zt {

namespace {

// ---- metadata ----

constexpr LONG AtTheEnd = -1;

ComPtr<IDispatch> GetDeclaration(KernelProject* project, const std::wstring& name) {
    const _bstr_t text = MakeText(name);
    ComPtr<IDispatch> declaration;
    KernelProject::GetDeclaration::Call(project, Borrow(text), &declaration);
    if (declaration == nullptr)
        throw CString(L"Can't create declaration for metadata: ") + name.c_str();
    return declaration;
}

// The project's item of that declaration; a new one where it has none. metadata may be null.
ComPtr<MetadataItem> GetItem(KernelProject* project, MetadataCollection* metadata,
                             IDispatch* declaration, const std::wstring& name) {
    ComPtr<MetadataItem> item;
    if (metadata != nullptr)
        MetadataCollection::FindItem::Call(metadata, _variant_t(declaration), &item);
    if (item == nullptr)
        KernelProject::InsertMetadata::Call(project, AtTheEnd, declaration, &item);
    if (item == nullptr)
        throw CString(L"Can't insert metadata: ") + name.c_str();
    return item;
}

// Returns whether the item's value changed.
bool SetItem(MetadataItem* item, const std::wstring& name, const std::wstring& value) {
    const _bstr_t text = MakeText(value);
    const HRESULT set = MetadataItem::SetValue::Call(item, Borrow(text));
    if (FAILED(set))
        throw CString(L"Can't set value of metadata: ") + name.c_str();
    return set == S_OK;
}

bool ApplyEntry(KernelProject* project, MetadataCollection* metadata, const std::wstring& name,
                const MetadataEntry& entry, RunLog& log) {
    const ComPtr<IDispatch> declaration = GetDeclaration(project, name);
    const ComPtr<MetadataItem> item = GetItem(project, metadata, declaration.Get(), name);
    _variant_t current;
    MetadataItem::GetValue::Call(item.Get(), &current);
    const bool modified =
        (current.vt == VT_EMPTY || entry.bSet) && SetItem(item.Get(), name, entry.value);
    if (modified)
        log.Log(L"Value of metadata '%s' set to '%s'\n", name.c_str(), entry.value.c_str());
    ClearVariant(current);
    return modified;
}

// ---- edit handler ----

ComPtr<IDispatch> CreateHandler(const std::wstring& progId) {
    ComPtr<IDispatch> handler;
    if (FAILED(CreateEditHandler(progId.c_str(), nullptr, AllServers, &handler)))
        throw CString(L"Can't create edit handler: ") + progId.c_str();
    return handler;
}

// Every boolean is a success, false as well; of any other type, the first 16 bits decide. A method
// that returns nothing has failed.
bool IsSuccess(const VARIANT& result) {
    return result.vt == VT_BOOL || (result.vt != VT_EMPTY && result.iVal != 0);
}

CString FailureText(const std::wstring& method, const ExceptionInfo& info) {
    CString text = CString(L"Error calling EDIT method '") + method.c_str() + L"'. ";
    return text += info.bstrDescription;
}

// Returns what the method returned.
_variant_t CallHandler(IDispatch* handler, const std::wstring& method, IDispatch* kernel) {
    DISPID id = DISPID_UNKNOWN;
    if (FAILED(FindName(handler, method.c_str(), &id)))
        throw CString(L"EDIT method not found: ") + method.c_str();
    _variant_t result;
    ExceptionInfo info;
    const HRESULT called = InvokeMethod(handler, id, _variant_t(kernel), &result, &info);
    if (FAILED(called) || !IsSuccess(result)) {
        info.Complete();
        throw FailureText(method, info);
    }
    return _variant_t(result.GetVARIANT(), false);
}

} // namespace

bool ApplyMetadata(KernelProject* project, const MetadataMap& metadata, RunLog& log) {
    ComPtr<MetadataCollection> collection;
    KernelProject::GetMetadata::Call(project, &collection);
    bool modified = false;
    for (const auto& [name, entry] : metadata)
        modified |= ApplyEntry(project, collection.Get(), name, entry, log);
    return modified;
}

bool RenameProject(KernelProject* project, const std::wstring& newName, RunLog& log) {
    const _bstr_t name = MakeText(newName);
    if (KernelProject::Rename::Call(project, Borrow(name)) != S_OK)
        return false;
    log.Log(L"Project name changed to '%s'\n", newName.c_str());
    return true;
}

bool RunEditHandler(KernelAdmin* kernel, const std::wstring& progId, const std::wstring& method,
                    RunLog& log) {
    const ComPtr<IDispatch> handler = CreateHandler(progId);
    _variant_t result = CallHandler(handler.Get(), method, kernel);
    log.Log(L"Edit handler (ProgID: '%s', Method: '%s') succeeded\n", progId.c_str(),
            method.c_str());
    ClearVariant(result);
    return true;
}

bool AttachDocument(const ProjectRequest& request, const ProjectRun& run) {
    const DocumentLocation document = LocateDocument(request.documentPath, request.exchangePath);
    run.documentFolder = document.folder;
    const _bstr_t fullPath = MakeText(document.fullPath);
    const HRESULT attached = KernelProject::AttachDocument::Call(
        run.project.Get(), Borrow(fullPath), Borrow(run.documentHandler));
    if (FAILED(attached))
        throw CString(L"Error attaching document: ") + document.fullPath.c_str();
    run.log.Log(L"Document '%s' attached to the project\n", request.documentPath.c_str());
    return true;
}

bool StartNewRevision(KernelProject* project, RunLog& log) {
    KernelProject::StartNewRevision::Call(project);
    log.Log(L"New revision of the project started\n");
    return true;
}

} // namespace zt
