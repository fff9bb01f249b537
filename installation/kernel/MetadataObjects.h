// A project's metadata: declarations, the collection and its items.
#pragma once

#include "components/contracts/Kernel.h"
#include "installation/kernel/KernelProjectObject.h"
#include "installation/runtime/Ref.h"
#include "installation/runtime/StandIn.h"

#include <string>

namespace devinst {

class MetadataDeclarationObject final : public StandIn {
  public:
    explicit MetadataDeclarationObject(std::wstring name);

    const std::wstring& DeclaredName() const { return m_name; }

  private:
    std::wstring m_name;
};

class MetadataCollectionObject final : public StandIn {
  public:
    explicit MetadataCollectionObject(Ref<KernelProjectObject> project);

    HRESULT On(zt::MetadataCollection::FindItem, const VARIANT& declaration,
               zt::MetadataItem** item);

  private:
    Ref<KernelProjectObject> m_project;
};

class MetadataItemObject final : public StandIn {
  public:
    MetadataItemObject(Ref<KernelProjectObject> project, std::wstring name);

    HRESULT On(zt::MetadataItem::SetValue, BSTR value);
    HRESULT On(zt::MetadataItem::GetValue, VARIANT* value);

  private:
    Ref<KernelProjectObject> m_project;
    std::wstring m_name;
};

} // namespace devinst
