#include "config/XmlDocument.h"

#include "components/Creation.h"

#include <optional>
#include <utility>

namespace zt {

namespace {

// The platform's parser and what it answers to. The compiler's library has them only in part.
constexpr CLSID DocumentClass = {
    0x2933BF90, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID DocumentInterface = {
    0x2933BF81, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID Document2Interface = {
    0x2933BF95, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};
constexpr IID ElementInterface = {
    0x2933BF86, 0x7B36, 0x11D2, {0xB2, 0x0E, 0x00, 0xC0, 0x4F, 0x98, 0x3E, 0x60}};

// The value of readyState when the loading has ended, well or badly.
constexpr long Completed = 4;

// Every path of the program means the same in XPath and in the older language that the parser
// otherwise takes; XPath's rules for quoted texts are the defined ones.
void SelectInXPath(IXMLDOMDocument* document) {
    if (const auto document2 = Query<IXMLDOMDocument2>(document, Document2Interface))
        document2->setProperty(_bstr_t(L"SelectionLanguage"), _variant_t(L"XPath"));
}

XmlElement SelectSingleFrom(IXMLDOMNode* node, const wchar_t* path) {
    ComPtr<IXMLDOMNode> found;
    if (node == nullptr || node->selectSingleNode(_bstr_t(path), found.GetAddressOf()) != S_OK)
        return {};
    return XmlElement(std::move(found));
}

// How often the loading is looked at while no message comes, in milliseconds.
constexpr DWORD PollInterval = 10;

// Dispatches what stands in this thread's queue; WM_QUIT stays for whoever waits for it.
void PumpMessages() {
    std::optional<int> quit;
    MSG message = {};
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        if (message.message == WM_QUIT) {
            quit = static_cast<int>(message.wParam);
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    if (quit)
        PostQuitMessage(*quit);
}

} // namespace

bool WaitWithMessages(const std::function<bool()>& condition, DWORD longest) {
    const ULONGLONG start = GetTickCount64();
    while (!condition()) {
        if (GetTickCount64() - start > longest)
            return false;
        MsgWaitForMultipleObjects(0, nullptr, FALSE, PollInterval, QS_ALLINPUT);
        PumpMessages();
    }
    return true;
}

XmlElement XmlElement::SelectSingle(const wchar_t* path) const {
    return SelectSingleFrom(m_node.Get(), path);
}

std::vector<XmlElement> XmlElement::SelectAll(const wchar_t* path) const {
    std::vector<XmlElement> elements;
    ComPtr<IXMLDOMNodeList> list;
    if (m_node == nullptr || m_node->selectNodes(_bstr_t(path), list.GetAddressOf()) != S_OK ||
        list == nullptr)
        return elements;
    ComPtr<IXMLDOMNode> node;
    while (list->nextNode(node.ReleaseAndGetAddressOf()) == S_OK && node != nullptr)
        elements.emplace_back(node);
    return elements;
}

_bstr_t XmlElement::Text() const {
    if (m_node == nullptr)
        return {};
    BSTR text = nullptr;
    m_node->get_text(&text);
    return text != nullptr ? _bstr_t(text, false) : _bstr_t(L"");
}

std::optional<_bstr_t> XmlElement::Attribute(const wchar_t* name) const {
    const auto element = Query<IXMLDOMElement>(m_node.Get(), ElementInterface);
    _variant_t value;
    if (element == nullptr || element->getAttribute(_bstr_t(name), &value) != S_OK ||
        value.vt != VT_BSTR || value.bstrVal == nullptr)
        return std::nullopt;
    return _bstr_t(value.Detach().bstrVal, false);
}

HRESULT XmlDocument::Create() {
    const HRESULT created = zt::Create<IXMLDOMDocument>(
        DocumentClass, m_document.ReleaseAndGetAddressOf(), DocumentInterface);
    if (FAILED(created) || m_document == nullptr)
        return FAILED(created) ? created : E_POINTER;
    SelectInXPath(m_document.Get());
    m_document->put_async(1);
    return created;
}

bool XmlDocument::Load(const wchar_t* path, DWORD longest) {
    VARIANT_BOOL loaded = VARIANT_FALSE;
    if (m_document == nullptr ||
        m_document->load(_variant_t(path != nullptr ? path : L""), &loaded) != S_OK ||
        loaded == VARIANT_FALSE)
        return false;
    if (!WaitWithMessages([this] { return IsComplete(); }, longest)) {
        m_document->abort();
        return false;
    }
    // An asynchronous load succeeds as soon as it has begun.
    ComPtr<IXMLDOMParseError> error;
    long code = 0;
    return SUCCEEDED(m_document->get_parseError(error.GetAddressOf())) &&
           (error == nullptr || (SUCCEEDED(error->get_errorCode(&code)) && code == 0));
}

XmlElement XmlDocument::SelectSingle(const wchar_t* path) const {
    return SelectSingleFrom(m_document.Get(), path);
}

bool XmlDocument::IsComplete() const {
    long state = 0;
    return SUCCEEDED(m_document->get_readyState(&state)) && state == Completed;
}

} // namespace zt
