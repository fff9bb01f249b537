#include "installation/publishing/ProjectContent.h"

#include "installation/handlers/OpenProject.h"
#include "installation/model/ProjectFiles.h"
#include "installation/runtime/Call.h"

#include <comdef.h>

namespace devinst {

namespace fs = std::filesystem;

namespace {

std::vector<std::pair<std::wstring, std::wstring>> ReadMetadata(const XmlElement& content) {
    std::vector<std::pair<std::wstring, std::wstring>> metadata;
    const XmlElement list = Child(content, L"metadata");
    if (list == nullptr)
        return metadata;
    for (const XmlElement& item : Children(list, L"item")) {
        if (Attribute(item, L"unset").empty())
            metadata.emplace_back(Attribute(item, L"name"), TextOf(item));
    }
    return metadata;
}

std::vector<PublishedDocument> ReadDocuments(const XmlElement& content, const fs::path& folder) {
    std::vector<PublishedDocument> documents;
    const XmlElement list = Child(content, L"documents");
    if (list == nullptr)
        return documents;
    for (const XmlElement& document : Children(list, L"document")) {
        const std::wstring name = Attribute(document, L"name");
        if (IsFileName(name))
            documents.push_back({name, folder / L"documents" / name});
    }
    return documents;
}

std::wstring ReadText(IDispatch* object, const wchar_t* name) {
    wchar_t* names[] = {const_cast<wchar_t*>(name)};
    DISPID id = DISPID_UNKNOWN;
    DISPPARAMS none = {};
    _variant_t value;
    if (FAILED(object->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id)) ||
        FAILED(object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none,
                              &value, nullptr, nullptr)) ||
        value.vt != VT_BSTR || value.bstrVal == nullptr)
        return {};
    return value.bstrVal;
}

} // namespace

ProjectContent ReadProject(IDispatch* kernel) {
    OpenProject project(kernel);
    const XmlFile content = XmlFile::FromText(project.Content());
    return {project.Name(), project.Revision(), ReadMetadata(content.Root()),
            ReadDocuments(content.Root(), project.Folder()), project.Representations()};
}

std::vector<PublishedObject> ReadObjects(IDispatch* kernel) {
    const XmlFile content = XmlFile::FromText(OpenProject(kernel).Content());
    std::vector<PublishedObject> objects;
    const XmlElement list = Child(content.Root(), L"objects");
    if (list == nullptr)
        return objects;
    for (const XmlElement& object : Children(list, L"object"))
        objects.push_back({Attribute(object, L"id"), Attribute(object, L"name"),
                           Attribute(object, L"part"), Attribute(object, L"representation")});
    return objects;
}

PublishedObject DescribeObject(IUnknown* object) {
    ComPtr<IDispatch> automation;
    if (object == nullptr || FAILED(object->QueryInterface(IID_PPV_ARGS(&automation))) ||
        automation == nullptr)
        throw ComFailure{E_INVALIDARG, L"What a node refers to tells nothing of itself."};
    return {ReadText(automation.Get(), L"Id"), ReadText(automation.Get(), L"Name"),
            ReadText(automation.Get(), L"PartNumber"),
            ReadText(automation.Get(), L"Representation")};
}

} // namespace devinst
