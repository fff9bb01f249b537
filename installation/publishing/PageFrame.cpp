#include "installation/publishing/PageFrame.h"

#include "installation/publishing/Html.h"

#include <cmath>

namespace devinst {

namespace {

constexpr int PictureWidth = 160;

// The folder of the resources as links name it. Links of a component that was given another tag
// lead nowhere.
std::string ResourceFolder(const Publication& publication) {
    return publication.resourceTag == ResourceTag ? "resources/" : Html(publication.resourceTag);
}

} // namespace

std::string PageFrame(const Publication& publication, const std::string& root,
                      const std::wstring& title, const std::string& content) {
    std::string page = "<!DOCTYPE html>\n<html lang=\"" + Html(publication.language) +
                       "\">\n<head>\n<meta charset=\"utf-8\">\n<title>" + Html(title) +
                       "</title>\n<link rel=\"stylesheet\" href=\"" + root +
                       ResourceFolder(publication) + "style.css\">\n</head>\n<body class=\"" +
                       publication.kind + (publication.learning ? " learning" : "") + "\">\n" +
                       content;
    if (!publication.settings.footer.empty())
        page += "<footer>" + Html(publication.settings.footer) + "</footer>\n";
    return page + "</body>\n</html>\n";
}

std::string Picture(const Publication& publication, const std::string& root,
                    const std::wstring& file) {
    const long width = std::lround(PictureWidth * publication.settings.scale);
    return "<img src=\"" + root + "pictures/" + HtmlAddress(file) + "\" alt=\"" + Html(file) +
           "\" width=\"" + std::to_string(width) + "\">";
}

} // namespace devinst
