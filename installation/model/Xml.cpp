#include "installation/model/Xml.h"

#include "installation/runtime/Call.h"

#include <comdef.h>

namespace devinst {

namespace {

// The toolchain's libraries lack these.
constexpr GUID ClassDocument = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr GUID InterfaceDocument = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr GUID InterfaceElement = {
    0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

void Check(HRESULT result, const wchar_t* what) {
    if (FAILED(result))
        throw ComFailure{result, what};
}

[[noreturn]] void ThrowParseError(IXMLDOMDocument* document, const std::wstring& name) {
    ComPtr<IXMLDOMParseError> error;
    _bstr_t reason;
    LONG line = 0;
    if (SUCCEEDED(document->get_parseError(&error)) && error != nullptr) {
        error->get_reason(reason.GetAddress());
        error->get_line(&line);
    }
    const wchar_t* const text = reason.length() != 0 ? static_cast<const wchar_t*>(reason) : L"";
    std::wstring description = name + L" is damaged (line " + std::to_wstring(line) + L"): " + text;
    description.erase(description.find_last_not_of(L" \r\n") + 1);
    throw ComFailure{E_FAIL, description};
}

_bstr_t Bstr(const std::wstring& text) {
    return _bstr_t(SysAllocStringLen(text.data(), static_cast<UINT>(text.size())), false);
}

std::wstring Owned(BSTR text) {
    const _bstr_t owner(text, false);
    return text != nullptr ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

} // namespace

XmlFile::XmlFile() {
    Check(CoCreateInstance(ClassDocument, nullptr, CLSCTX_ALL, InterfaceDocument,
                           reinterpret_cast<void**>(m_document.GetAddressOf())),
          L"The platform has no XML document.");
    m_document->put_async(VARIANT_FALSE);
    m_document->put_validateOnParse(VARIANT_FALSE);
}

XmlFile XmlFile::FromText(const std::wstring& text) {
    XmlFile file;
    VARIANT_BOOL loaded = VARIANT_FALSE;
    file.m_document->loadXML(Bstr(text), &loaded);
    if (loaded != VARIANT_TRUE)
        ThrowParseError(file.m_document.Get(), L"The text");
    return file;
}

XmlFile XmlFile::FromFile(const std::filesystem::path& path, Blanks blanks) {
    XmlFile file;
    file.m_document->put_preserveWhiteSpace(blanks == Blanks::Kept ? VARIANT_TRUE : VARIANT_FALSE);
    VARIANT_BOOL loaded = VARIANT_FALSE;
    file.m_document->load(_variant_t(path.c_str()), &loaded);
    if (loaded != VARIANT_TRUE)
        ThrowParseError(file.m_document.Get(), path.filename().wstring());
    return file;
}

XmlElement XmlFile::Root() const {
    XmlElement root;
    m_document->get_documentElement(&root);
    if (root == nullptr)
        throw ComFailure{E_FAIL, L"The document is empty."};
    return root;
}

std::wstring XmlFile::Text() const {
    BSTR text = nullptr;
    Check(m_document->get_xml(&text), L"The document cannot be written as text.");
    return Owned(text);
}

void XmlFile::Save(const std::filesystem::path& path) const {
    Check(m_document->save(_variant_t(path.c_str())), L"A file of the project cannot be written.");
}

XmlElement AsElement(IXMLDOMNode* node) {
    XmlElement element;
    if (node != nullptr)
        node->QueryInterface(InterfaceElement, reinterpret_cast<void**>(element.GetAddressOf()));
    return element;
}

std::vector<XmlElement> Children(const XmlElement& parent, const wchar_t* name) {
    std::vector<XmlElement> found;
    ComPtr<IXMLDOMNode> node;
    parent->get_firstChild(&node);
    while (node != nullptr) {
        const XmlElement element = AsElement(node.Get());
        BSTR tag = nullptr;
        if (element != nullptr && SUCCEEDED(element->get_tagName(&tag)) && Owned(tag) == name)
            found.push_back(element);
        ComPtr<IXMLDOMNode> next;
        node->get_nextSibling(&next);
        node = next;
    }
    return found;
}

XmlElement Child(const XmlElement& parent, const wchar_t* name) {
    const std::vector<XmlElement> found = Children(parent, name);
    return found.empty() ? XmlElement() : found.front();
}

XmlElement RequireChild(const XmlElement& parent, const wchar_t* name) {
    const XmlElement found = Child(parent, name);
    return found != nullptr ? found : AddChild(parent, name);
}

XmlElement AddChild(const XmlElement& parent, const wchar_t* name) {
    ComPtr<IXMLDOMDocument> document;
    Check(parent->get_ownerDocument(&document), L"The document is gone.");
    XmlElement element;
    Check(document->createElement(_bstr_t(name), &element), L"An element cannot be made.");
    ComPtr<IXMLDOMNode> added;
    Check(parent->appendChild(element.Get(), &added), L"An element cannot be added.");
    return element;
}

std::wstring Attribute(const XmlElement& element, const wchar_t* name) {
    _variant_t value;
    if (element->getAttribute(_bstr_t(name), &value) != S_OK || value.vt != VT_BSTR)
        return {};
    return Owned(value.Detach().bstrVal);
}

void SetAttribute(const XmlElement& element, const wchar_t* name, const std::wstring& value) {
    Check(element->setAttribute(_bstr_t(name), _variant_t(Bstr(value))),
          L"An attribute cannot be set.");
}

void RemoveAttribute(const XmlElement& element, const wchar_t* name) {
    element->removeAttribute(_bstr_t(name));
}

std::wstring TextOf(const XmlElement& element) {
    BSTR text = nullptr;
    element->get_text(&text);
    return Owned(text);
}

void SetTextOf(const XmlElement& element, const std::wstring& text) {
    Check(element->put_text(Bstr(text)), L"A text cannot be set.");
}

} // namespace devinst
