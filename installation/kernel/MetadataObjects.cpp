#include "installation/kernel/MetadataObjects.h"

#include "installation/runtime/EarlyBound.h"

#include <utility>

namespace devinst {

namespace {

bool IsUnset(const XmlElement& item) {
    return Attribute(item, L"unset") == L"yes";
}

} // namespace

MetadataDeclarationObject::MetadataDeclarationObject(std::wstring name)
    : StandIn("MetadataDeclaration"), m_name(std::move(name)) {
    AddFace(IID_IDispatch, FunctionTable<DispatchOnly, MetadataDeclarationObject>());
}

MetadataCollectionObject::MetadataCollectionObject(Ref<KernelProjectObject> project)
    : StandIn(zt::MetadataCollection::Name), m_project(std::move(project)) {
    AddFace(IID_IDispatch, FunctionTable<zt::MetadataCollection, MetadataCollectionObject>());
}

HRESULT MetadataCollectionObject::On(zt::MetadataCollection::FindItem, const VARIANT& declaration,
                                     zt::MetadataItem** item) {
    if (declaration.vt != VT_DISPATCH)
        return DISP_E_TYPEMISMATCH;
    const auto declared = RefOf<MetadataDeclarationObject>(declaration.pdispVal);
    if (!declared)
        return E_INVALIDARG;
    if (m_project->FindMetadata(declared->DeclaredName()) != nullptr)
        *item = Ref<MetadataItemObject>::Make(m_project, declared->DeclaredName())
                    .Detach<zt::MetadataItem>();
    return S_OK;
}

MetadataItemObject::MetadataItemObject(Ref<KernelProjectObject> project, std::wstring name)
    : StandIn(zt::MetadataItem::Name), m_project(std::move(project)), m_name(std::move(name)) {
    AddFace(IID_IDispatch, FunctionTable<zt::MetadataItem, MetadataItemObject>());
}

HRESULT MetadataItemObject::On(zt::MetadataItem::SetValue, BSTR value) {
    const XmlElement item = m_project->FindMetadata(m_name);
    if (item == nullptr)
        return E_UNEXPECTED;
    const std::wstring text = value != nullptr ? value : L"";
    if (!IsUnset(item) && TextOf(item) == text)
        return S_FALSE;
    RemoveAttribute(item, L"unset");
    SetTextOf(item, text);
    return S_OK;
}

HRESULT MetadataItemObject::On(zt::MetadataItem::GetValue, VARIANT* value) {
    const XmlElement item = m_project->FindMetadata(m_name);
    if (item == nullptr)
        return E_UNEXPECTED;
    if (IsUnset(item))
        return S_OK;
    value->vt = VT_BSTR;
    value->bstrVal = SysAllocString(TextOf(item).c_str());
    return S_OK;
}

} // namespace devinst
