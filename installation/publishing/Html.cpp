#include "installation/publishing/Html.h"

#include "installation/runtime/Utf8.h"

#include <cstdio>
#include <iterator>

namespace devinst {

std::string Html(const std::wstring& text) {
    std::string result;
    for (const char c : ToUtf8(text)) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string HtmlAddress(const std::wstring& path) {
    constexpr std::string_view Plain = "-._~/";
    std::string result;
    for (const char c : ToUtf8(path)) {
        const bool isPlain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                             (c >= '0' && c <= '9') || Plain.find(c) != std::string_view::npos;
        char encoded[8] = {};
        std::snprintf(encoded, std::size(encoded), isPlain ? "%c" : "%%%02X",
                      static_cast<unsigned char>(c));
        result += encoded;
    }
    return result;
}

std::string ReplaceAll(std::string text, std::string_view what, std::string_view with) {
    if (what.empty())
        return text;
    for (std::size_t at = text.find(what); at != std::string::npos;
         at = text.find(what, at + with.size()))
        text.replace(at, what.size(), with);
    return text;
}

} // namespace devinst
