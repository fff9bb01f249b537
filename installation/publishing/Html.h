// Pieces of HTML, in UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace devinst {

// The text with its special characters escaped; fit for content and for attributes in double
// quotes.
std::string Html(const std::wstring& text);

// A relative address of a file: everything but letters, digits and "-._~/" percent-encoded.
std::string HtmlAddress(const std::wstring& path);

std::string ReplaceAll(std::string text, std::string_view what, std::string_view with);

} // namespace devinst
