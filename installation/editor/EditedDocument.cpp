#include "installation/editor/EditedDocument.h"

#include <comdef.h>

#include <cwchar>
#include <utility>

namespace devinst {

namespace {

using XmlNode = ComPtr<IXMLDOMNode>;

// Empty for what is no element.
std::wstring ElementName(const XmlNode& node) {
    DOMNodeType type = NODE_INVALID;
    _bstr_t name;
    if (FAILED(node->get_nodeType(&type)) || type != NODE_ELEMENT)
        return {};
    node->get_nodeName(name.GetAddress());
    return name.length() != 0 ? static_cast<const wchar_t*>(name) : L"";
}

XmlNode FirstChild(const XmlNode& node) {
    XmlNode child;
    node->get_firstChild(&child);
    return child;
}

XmlNode NextSibling(const XmlNode& node) {
    XmlNode sibling;
    node->get_nextSibling(&sibling);
    return sibling;
}

void Remove(const XmlNode& parent, const XmlNode& child) {
    XmlNode removed;
    parent->removeChild(child.Get(), &removed);
}

// Puts the children of child into its place. Returns the first of them, or what followed child.
XmlNode Unwrap(const XmlNode& parent, const XmlNode& child) {
    XmlNode first;
    for (XmlNode inner = FirstChild(child); inner != nullptr; inner = FirstChild(child)) {
        XmlNode moved;
        if (FAILED(parent->insertBefore(inner.Get(), _variant_t(child.Get()), &moved)))
            break;
        if (first == nullptr)
            first = inner;
    }
    const XmlNode following = NextSibling(child);
    Remove(parent, child);
    return first != nullptr ? first : following;
}

// Returns whether there were any.
bool RemoveMarksBelow(const XmlNode& parent) {
    bool found = false;
    for (XmlNode child = FirstChild(parent); child != nullptr;) {
        const std::wstring name = ElementName(child);
        if (name == L"delete") {
            const XmlNode following = NextSibling(child);
            Remove(parent, child);
            child = following;
            found = true;
        } else if (name == L"insert") {
            child = Unwrap(parent, child);
            found = true;
        } else {
            found |= RemoveMarksBelow(child);
            child = NextSibling(child);
        }
    }
    return found;
}

} // namespace

EditedDocument::EditedDocument(std::filesystem::path path, ProjectFacts facts)
    : m_path(std::move(path)), m_facts(std::move(facts)),
      m_file(XmlFile::FromFile(m_path, Blanks::Kept)) {
    if (!m_facts.title.empty())
        TakeOver(L"title", m_facts.title);
}

void EditedDocument::TakeOver(const wchar_t* attribute, const std::wstring& value) {
    if (Attribute(m_file.Root(), attribute) == value)
        return;
    SetAttribute(m_file.Root(), attribute, value);
    m_changed = true;
}

void EditedDocument::RemoveChangeMarks() {
    m_changed |= RemoveMarksBelow(XmlNode(m_file.Root().Get()));
}

void EditedDocument::StampSave() {
    const long saves = std::wcstol(Attribute(m_file.Root(), L"saves").c_str(), nullptr, 10);
    TakeOver(L"saves", std::to_wstring(saves + 1));
    TakeOver(L"savedRevision", m_facts.revision);
}

void EditedDocument::Save() {
    m_file.Save(m_path);
    m_changed = false;
}

} // namespace devinst
