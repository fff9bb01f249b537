#pragma once

#include "components/contracts/Kernel.h"
#include "installation/kernel/KernelAdminObject.h"
#include "installation/kernel/Scripting.h"
#include "installation/model/Xml.h"
#include "installation/runtime/Ref.h"
#include "installation/runtime/StandIn.h"

#include <filesystem>
#include <map>
#include <optional>
#include <string>

namespace devinst {

class ReferencedObject;

// An open project. Its index is read when it is opened, its content by Load; both are kept in
// memory until they are saved.
class KernelProjectObject final : public StandIn {
  public:
    // folder: the project's folder in the work folder. Raises ComFailure when it holds no project.
    KernelProjectObject(Ref<KernelAdminObject> kernel, std::filesystem::path folder);

    HRESULT On(zt::KernelProject::GetStoredName, BSTR* name);
    HRESULT On(zt::KernelProject::GetNodeTree, IUnknown** root);
    HRESULT On(zt::KernelProject::Load, LONG mode);
    HRESULT On(zt::KernelProject::Rename, BSTR name);
    HRESULT On(zt::KernelProject::GetDeclaration, BSTR name, IDispatch** declaration);
    HRESULT On(zt::KernelProject::GetDocumentName, BSTR* name);
    HRESULT On(zt::KernelProject::GetMetadata, zt::MetadataCollection** metadata);
    HRESULT On(zt::KernelProject::InsertMetadata, LONG position, IDispatch* declaration,
               zt::MetadataItem** item);
    HRESULT On(zt::KernelProject::StartNewRevision);
    HRESULT On(zt::KernelProject::GetSpecificationName, BSTR* name);
    HRESULT On(zt::KernelProject::GetSpecificationVersion, BSTR* version);
    HRESULT On(zt::KernelProject::GetConfigurationKey, BSTR* key);
    HRESULT On(zt::KernelProject::AttachDocument, BSTR path, BSTR handler);
    HRESULT On(zt::KernelProject::GenerateDocument, BSTR handler);
    HRESULT On(zt::KernelProject::GetLanguage, BSTR* language);
    HRESULT On(zt::KernelProject::PutLanguage, BSTR language);

    HRESULT On(ProjectScripting::GetName, BSTR* name);
    HRESULT On(ProjectScripting::SetMetadata, BSTR name, BSTR value);
    HRESULT On(ProjectScripting::GetMetadata, BSTR name, BSTR* value);
    HRESULT On(ProjectScripting::GetRevision, BSTR* revision);
    HRESULT On(ProjectScripting::GetDocumentPath, BSTR* path);
    HRESULT On(ProjectScripting::GetContent, BSTR* content);
    HRESULT On(ProjectScripting::GetFolder, BSTR* folder);
    HRESULT On(ProjectScripting::GetRepresentations, BSTR* folder);
    HRESULT FindDispatchName(const wchar_t* name, DISPID* id) override;
    HRESULT InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters, VARIANT* result,
                           EXCEPINFO* exception) override;

    std::wstring Revision() const;
    const std::filesystem::path& Folder() const { return m_folder; }

    // The root of the loaded content; raises ComFailure before Load.
    XmlElement Content() const;
    // The <item> of a metadata name, empty when the project has none; AddMetadata adds it, unset.
    XmlElement FindMetadata(const std::wstring& name) const;
    XmlElement AddMetadata(const std::wstring& name);
    // The project's document in its folder; empty when it has none.
    std::filesystem::path DocumentPath() const;
    // Writes index and content to the project's folder.
    void Save() const;

    // What the nodes refer to, by id; one object for each as long as anyone holds it. Empty for
    // an id that the project does not list.
    Ref<ReferencedObject> ObjectOf(const std::wstring& id);
    void Forget(const std::wstring& id) { m_objects.erase(id); }

  private:
    ~KernelProjectObject() override;

    HRESULT GiveIndexText(const wchar_t* attribute, BSTR* text) const;
    void MakeMainDocument(const std::wstring& name, BSTR handler);

    Ref<KernelAdminObject> m_kernel;
    std::filesystem::path m_folder;
    XmlFile m_index;
    std::optional<XmlFile> m_content;
    std::map<std::wstring, ReferencedObject*> m_objects; // the living ones
};

} // namespace devinst
