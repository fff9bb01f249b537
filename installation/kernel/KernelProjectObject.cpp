#include "installation/kernel/KernelProjectObject.h"

#include "installation/kernel/MetadataObjects.h"
#include "installation/model/InstallationSettings.h"
#include "installation/model/ProjectFiles.h"
#include "installation/runtime/EarlyBound.h"
#include "installation/runtime/LateBound.h"

#include <fstream>
#include <utility>

namespace devinst {

namespace fs = std::filesystem;

namespace {

std::wstring TextFrom(BSTR text) {
    return text != nullptr ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

HRESULT Give(const std::wstring& text, BSTR* place) {
    *place = SysAllocString(text.c_str());
    return *place != nullptr ? S_OK : E_OUTOFMEMORY;
}

} // namespace

KernelProjectObject::KernelProjectObject(Ref<KernelAdminObject> kernel, fs::path folder)
    : StandIn(zt::KernelProject::Name), m_kernel(std::move(kernel)), m_folder(std::move(folder)),
      m_index(XmlFile::FromFile(m_folder / L"index.xml")) {
    ProjectOf(m_index);
    // The kernel does not tell projects' own interface identifier; they are handed out as such.
    AddFace(IID_IDispatch, FunctionTable<zt::KernelProject, KernelProjectObject>());
}

KernelProjectObject::~KernelProjectObject() {
    m_kernel->Forget(this);
}

HRESULT KernelProjectObject::GiveIndexText(const wchar_t* attribute, BSTR* text) const {
    return Give(Attribute(ProjectOf(m_index), attribute), text);
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetStoredName, BSTR* name) {
    return GiveIndexText(L"storedName", name);
}

HRESULT KernelProjectObject::On(zt::KernelProject::Load, LONG mode) {
    if (mode != 0)
        return E_INVALIDARG;
    m_content = XmlFile::FromFile(m_folder / L"project.xml");
    const fs::path document = DocumentPath();
    if (!document.empty() && !fs::exists(document))
        throw ComFailure{E_FAIL,
                         L"The project's document is missing: " + document.filename().wstring()};
    m_kernel->TheHost().AskForProduct();
    if (const XmlElement messages = Child(Content(), L"messages"); messages != nullptr) {
        for (const XmlElement& message : Children(messages, L"message"))
            m_kernel->TheHost().Show(TextOf(message),
                                     std::wcstol(Attribute(message, L"style").c_str(), nullptr, 0));
    }
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::Rename, BSTR name) {
    const std::wstring text = TextFrom(name);
    if (!IsFileName(text))
        return E_INVALIDARG;
    const XmlElement project = ProjectOf(m_index);
    if (Attribute(project, L"name") == text)
        return S_FALSE;
    SetAttribute(project, L"name", text);
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetDeclaration, BSTR name,
                                IDispatch** declaration) {
    const std::wstring text = TextFrom(name);
    bool declared = m_kernel->Declares(text);
    if (const XmlElement own = Child(Content(), L"declarations"); own != nullptr) {
        for (const XmlElement& entry : Children(own, L"declaration"))
            declared = declared || Attribute(entry, L"name") == text;
    }
    if (declared)
        *declaration = Ref<MetadataDeclarationObject>::Make(text).Detach<IDispatch>();
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetDocumentName, BSTR* name) {
    const XmlElement documents = Child(Content(), L"documents");
    return Give(documents != nullptr ? Attribute(documents, L"main") : L"", name);
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetMetadata, zt::MetadataCollection** metadata) {
    *metadata = Ref<MetadataCollectionObject>::Make(Ref<KernelProjectObject>(this))
                    .Detach<zt::MetadataCollection>();
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::InsertMetadata, LONG position,
                                IDispatch* declaration, zt::MetadataItem** item) {
    const auto declared = RefOf<MetadataDeclarationObject>(declaration);
    if (position != -1 || !declared || FindMetadata(declared->DeclaredName()) != nullptr)
        return E_INVALIDARG;
    AddMetadata(declared->DeclaredName());
    *item = Ref<MetadataItemObject>::Make(Ref<KernelProjectObject>(this), declared->DeclaredName())
                .Detach<zt::MetadataItem>();
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::StartNewRevision) {
    const XmlElement project = ProjectOf(m_index);
    SetAttribute(project, L"revision", NextRevision(Attribute(project, L"revision")));
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetSpecificationName, BSTR* name) {
    return GiveIndexText(L"specification", name);
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetSpecificationVersion, BSTR* version) {
    return GiveIndexText(L"version", version);
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetConfigurationKey, BSTR* key) {
    return GiveIndexText(L"id", key);
}

HRESULT KernelProjectObject::On(zt::KernelProject::AttachDocument, BSTR path, BSTR handler) {
    Content();
    const fs::path source = TextFrom(path);
    if (!fs::is_regular_file(source))
        throw ComFailure{HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND),
                         L"There is no document " + source.wstring()};
    fs::create_directories(m_folder / L"documents");
    // The toolchain's copy_file never overwrites.
    const fs::path target = m_folder / L"documents" / source.filename();
    if (!CopyFileW(source.c_str(), target.c_str(), FALSE))
        throw ComFailure{HRESULT_FROM_WIN32(GetLastError()),
                         L"The document cannot be copied: " + source.wstring()};
    MakeMainDocument(source.filename().wstring(), handler);
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::GenerateDocument, BSTR handler) {
    Content();
    if (SysStringLen(handler) == 0)
        return E_INVALIDARG;
    const std::wstring name = Attribute(ProjectOf(m_index), L"name");
    const XmlElement title = FindMetadata(L"Title");
    const XmlFile document = XmlFile::FromText(L"<document/>");
    SetAttribute(document.Root(), L"title", title != nullptr ? TextOf(title) : name);
    SetAttribute(document.Root(), L"language", Attribute(ProjectOf(m_index), L"language"));
    SetAttribute(document.Root(), L"generator", TextFrom(handler));
    SetTextOf(AddChild(document.Root(), L"section"), name);
    fs::create_directories(m_folder / L"documents");
    document.Save(m_folder / L"documents" / (name + L".xml"));
    MakeMainDocument(name + L".xml", handler);
    return S_OK;
}

HRESULT KernelProjectObject::On(zt::KernelProject::GetLanguage, BSTR* language) {
    return GiveIndexText(L"language", language);
}

HRESULT KernelProjectObject::On(zt::KernelProject::PutLanguage, BSTR language) {
    SetAttribute(ProjectOf(m_index), L"language", TextFrom(language));
    return S_OK;
}

HRESULT KernelProjectObject::On(ProjectScripting::GetName, BSTR* name) {
    return GiveIndexText(L"name", name);
}

HRESULT KernelProjectObject::On(ProjectScripting::SetMetadata, BSTR name, BSTR value) {
    XmlElement item = FindMetadata(TextFrom(name));
    if (item == nullptr)
        item = AddMetadata(TextFrom(name));
    RemoveAttribute(item, L"unset");
    SetTextOf(item, TextFrom(value));
    return S_OK;
}

HRESULT KernelProjectObject::On(ProjectScripting::GetMetadata, BSTR name, BSTR* value) {
    const XmlElement item = FindMetadata(TextFrom(name));
    return Give(item != nullptr ? TextOf(item) : L"", value);
}

HRESULT KernelProjectObject::On(ProjectScripting::GetRevision, BSTR* revision) {
    return GiveIndexText(L"revision", revision);
}

HRESULT KernelProjectObject::On(ProjectScripting::GetDocumentPath, BSTR* path) {
    return Give(DocumentPath().wstring(), path);
}

HRESULT KernelProjectObject::On(ProjectScripting::GetContent, BSTR* content) {
    Content();
    return Give(m_content->Text(), content);
}

HRESULT KernelProjectObject::On(ProjectScripting::GetFolder, BSTR* folder) {
    return Give(m_folder.wstring(), folder);
}

HRESULT KernelProjectObject::On(ProjectScripting::GetRepresentations, BSTR* folder) {
    const std::wstring id = Attribute(ProjectOf(m_index), L"id");
    return Give((WorkFolderPath() / L"Representations" / id).wstring(), folder);
}

HRESULT KernelProjectObject::FindDispatchName(const wchar_t* name, DISPID* id) {
    return FindByContract<ProjectScripting>(name, id);
}

HRESULT KernelProjectObject::InvokeDispatch(DISPID id, WORD kind, DISPPARAMS& parameters,
                                            VARIANT* result, EXCEPINFO* exception) {
    return InvokeByContract<ProjectScripting>(*this, id, kind, parameters, result, exception);
}

std::wstring KernelProjectObject::Revision() const {
    return Attribute(ProjectOf(m_index), L"revision");
}

XmlElement KernelProjectObject::Content() const {
    if (!m_content)
        throw ComFailure{E_UNEXPECTED, L"The project is not loaded."};
    return m_content->Root();
}

XmlElement KernelProjectObject::FindMetadata(const std::wstring& name) const {
    const XmlElement metadata = Child(Content(), L"metadata");
    if (metadata == nullptr)
        return {};
    for (const XmlElement& item : Children(metadata, L"item")) {
        if (Attribute(item, L"name") == name)
            return item;
    }
    return {};
}

XmlElement KernelProjectObject::AddMetadata(const std::wstring& name) {
    XmlElement item = AddChild(RequireChild(Content(), L"metadata"), L"item");
    SetAttribute(item, L"name", name);
    SetAttribute(item, L"unset", L"yes");
    return item;
}

fs::path KernelProjectObject::DocumentPath() const {
    const XmlElement documents = Child(Content(), L"documents");
    const std::wstring name = documents != nullptr ? Attribute(documents, L"main") : L"";
    return IsFileName(name) ? m_folder / L"documents" / name : fs::path();
}

void KernelProjectObject::MakeMainDocument(const std::wstring& name, BSTR handler) {
    const XmlElement documents = RequireChild(Content(), L"documents");
    SetAttribute(documents, L"main", name);
    XmlElement document;
    for (const XmlElement& known : Children(documents, L"document")) {
        if (Attribute(known, L"name") == name)
            document = known;
    }
    if (document == nullptr)
        document = AddChild(documents, L"document");
    SetAttribute(document, L"name", name);
    SetAttribute(document, L"file", L"documents/" + name);
    SetAttribute(document, L"handler", TextFrom(handler));
}

void KernelProjectObject::Save() const {
    m_index.Save(m_folder / L"index.xml");
    if (m_content)
        m_content->Save(m_folder / L"project.xml");
}

} // namespace devinst
