// Reading of the XML files of the installation, with the platform's parser.
#pragma once

#include "support/ComPtr.h"

#include <comdef.h>
#include <msxml2.h>

#include <functional>
#include <optional>
#include <utility>
#include <vector>

namespace zt {

// An element of a document, or none.
class XmlElement {
  public:
    XmlElement() = default;
    explicit XmlElement(ComPtr<IXMLDOMNode> node) : m_node(std::move(node)) {}

    explicit operator bool() const { return m_node != nullptr; }

    // The first element that the path selects from here, or none.
    XmlElement SelectSingle(const wchar_t* path) const;
    // All elements that the path selects from here, in document order.
    std::vector<XmlElement> SelectAll(const wchar_t* path) const;

    // The element's whole text, as the parser gives it; null only without an element.
    _bstr_t Text() const;
    // The attribute's text, which may be empty; none when it is missing or the read does not
    // succeed exactly (S_OK).
    std::optional<_bstr_t> Attribute(const wchar_t* name) const;

  private:
    ComPtr<IXMLDOMNode> m_node;
};

class XmlDocument {
  public:
    // Makes the document. It is loaded asynchronously and selects in XPath. Returns the result
    // code of the creation.
    HRESULT Create();

    // Loads the file and waits for the end of the loading, dispatching the messages that the
    // parser sends to its own thread. True when the whole file was read and is well-formed. Gives
    // up, with false, when there is no end after that many milliseconds.
    bool Load(const wchar_t* path, DWORD longest = 60'000);

    // Selects from the document, whose only child is its root element; see XmlElement. A malformed
    // path must not be sent: some parsers do not survive it.
    XmlElement SelectSingle(const wchar_t* path) const;

  private:
    bool IsComplete() const;

    ComPtr<IXMLDOMDocument> m_document;
};

// Waits until the condition holds, dispatching this thread's messages meanwhile; WM_QUIT stays for
// whoever waits for it. False when the condition does not hold after that many milliseconds.
bool WaitWithMessages(const std::function<bool()>& condition, DWORD longest);

} // namespace zt
