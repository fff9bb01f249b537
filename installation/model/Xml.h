// The installation's XML files, over the platform's document object.
#pragma once

#include <windows.h>
#include <msxml2.h>
#include <wrl/client.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace devinst {

using Microsoft::WRL::ComPtr;
using XmlElement = ComPtr<IXMLDOMElement>;

// Whether text that is nothing but blanks is kept when a document is read.
enum class Blanks { Dropped, Kept };

// A loaded document. Failures are raised as ComFailure, with the parser's reason and line.
class XmlFile {
  public:
    static XmlFile FromText(const std::wstring& text);
    static XmlFile FromFile(const std::filesystem::path& path, Blanks blanks = Blanks::Dropped);

    XmlElement Root() const;
    std::wstring Text() const;
    void Save(const std::filesystem::path& path) const;

  private:
    XmlFile();
    ComPtr<IXMLDOMDocument> m_document;
};

// Empty for a node of another kind.
XmlElement AsElement(IXMLDOMNode* node);

// The child elements of that name.
std::vector<XmlElement> Children(const XmlElement& parent, const wchar_t* name);
// The first of them, empty when there is none; with Require, added when there is none.
XmlElement Child(const XmlElement& parent, const wchar_t* name);
XmlElement RequireChild(const XmlElement& parent, const wchar_t* name);
XmlElement AddChild(const XmlElement& parent, const wchar_t* name);

// Empty when the attribute is missing.
std::wstring Attribute(const XmlElement& element, const wchar_t* name);
void SetAttribute(const XmlElement& element, const wchar_t* name, const std::wstring& value);
void RemoveAttribute(const XmlElement& element, const wchar_t* name);
std::wstring TextOf(const XmlElement& element);
void SetTextOf(const XmlElement& element, const std::wstring& text);

} // namespace devinst
