#include "project/ChangeSteps.h"

#include "app/ZTInvisible.h"
#include "components/Values.h"

namespace zt {

namespace {

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

bool SetItem(CZTInvisible& app, MetadataItem* item, const std::wstring& name,
             const std::wstring& value) {
    const _bstr_t text = MakeText(value);
    const HRESULT set = MetadataItem::SetValue::Call(item, Borrow(text));
    if (FAILED(set))
        throw CString(L"Can't set value of metadata: ") + name.c_str();
    if (set != S_OK)
        return false;
    app.Log(L"Value of metadata '%s' set to '%s'\n", name.c_str(), value.c_str());
    return true;
}

bool ApplyEntry(CZTInvisible& app, MetadataCollection* metadata, const std::wstring& name,
                const MetadataEntry& entry) {
    KernelProject* const project = app.m_pKernelProject.Get();
    const ComPtr<IDispatch> declaration = GetDeclaration(project, name);
    const ComPtr<MetadataItem> item = GetItem(project, metadata, declaration.Get(), name);
    _variant_t current;
    MetadataItem::GetValue::Call(item.Get(), &current);
    bool modified = false;
    if (current.vt == VT_EMPTY || entry.bSet)
        modified = SetItem(app, item.Get(), name, entry.value);
    ClearVariant(current);
    return modified;
}

} // namespace

bool ApplyMetadata(CZTInvisible& app, const MetadataMap& metadata) {
    ComPtr<MetadataCollection> collection;
    KernelProject::GetMetadata::Call(app.m_pKernelProject.Get(), &collection);
    bool modified = false;
    for (const auto& [name, entry] : metadata)
        modified |= ApplyEntry(app, collection.Get(), name, entry);
    return modified;
}

} // namespace zt
