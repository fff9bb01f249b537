#include "installation/publishing/Html.h"
#include "installation/publishing/PageFrame.h"
#include "installation/publishing/Pages.h"

#include <comdef.h>

namespace devinst {

namespace {

struct Tag {
    const wchar_t* element;
    const char* html;
};

// An element that is not here is shown as a block of its own.
constexpr Tag Tags[] = {
    {L"section", "section"}, {L"title", "h3"},   {L"para", "p"},     {L"list", "ul"},
    {L"item", "li"},         {L"insert", "ins"}, {L"delete", "del"},
};

std::string HtmlTag(const std::wstring& element) {
    for (const Tag& tag : Tags) {
        if (element == tag.element)
            return tag.html;
    }
    return "div";
}

std::wstring Owned(BSTR text) {
    const _bstr_t owner(text, false);
    return text != nullptr ? std::wstring(text, SysStringLen(text)) : std::wstring();
}

std::string ContentOf(const Publication& publication, IXMLDOMNode* parent);

std::string ElementContent(const Publication& publication, const XmlElement& element) {
    BSTR name = nullptr;
    element->get_tagName(&name);
    const std::wstring tag = Owned(name);
    if (tag == L"figure")
        return "<p>" + Picture(publication, "../", Attribute(element, L"representation")) + "</p>";
    const std::string html = HtmlTag(tag);
    return "<" + html + ">" + ContentOf(publication, element.Get()) + "</" + html + ">";
}

std::string NodeContent(const Publication& publication, IXMLDOMNode* node) {
    DOMNodeType type = NODE_INVALID;
    node->get_nodeType(&type);
    if (type == NODE_ELEMENT)
        return ElementContent(publication, AsElement(node));
    if (type != NODE_TEXT && type != NODE_CDATA_SECTION)
        return {};
    BSTR text = nullptr;
    node->get_text(&text);
    return Html(Owned(text));
}

std::string ContentOf(const Publication& publication, IXMLDOMNode* parent) {
    std::string content;
    ComPtr<IXMLDOMNode> node;
    parent->get_firstChild(&node);
    while (node != nullptr) {
        content += NodeContent(publication, node.Get());
        ComPtr<IXMLDOMNode> next;
        node->get_nextSibling(&next);
        node = next;
    }
    return content;
}

} // namespace

std::string DocumentPage(const Publication& publication, const std::wstring& name,
                         const XmlElement& document) {
    const std::wstring title = Attribute(document, L"title");
    const std::string heading = "<header>\n<p><a href=\"../index.html\">" +
                                Html(publication.project.name) + "</a></p>\n<h1>" +
                                Html(title.empty() ? name : title) + "</h1>\n</header>\n<main>\n";
    return PageFrame(publication, "../", title.empty() ? name : title,
                     heading + ContentOf(publication, document.Get()) + "</main>\n");
}

} // namespace devinst
