// A publication: a folder of HTML pages that a browser opens at "index.html".
#pragma once

#include "installation/publishing/ProjectContent.h"
#include "installation/publishing/PublicationSettings.h"

#include <filesystem>
#include <string>
#include <vector>

namespace devinst {

// Names the folder of the pages' resources.
constexpr wchar_t ResourceTag[] = L"#res#";

// Something that the component was told, shown in the page under that identifier.
struct Fact {
    const char* id;
    std::wstring value;
};

struct Publication {
    std::string kind; // "catalogue", "text" or "view": class of the page's body
    std::wstring language;
    std::wstring contents; // name of the table of contents; may be empty
    std::wstring resourceTag;
    bool learning = false;
    ProjectContent project;
    std::vector<PublishedObject> objects;
    std::vector<Fact> facts;
    PublicationSettings settings;
};

// Writes the publication into folder, which is made where it is missing:
//
//   index.html, resources/style.css, pictures/..., documents/NAME and, for documents that are XML,
//   documents/NAME.html
//
// Raises ComFailure for what cannot be written.
void Publish(const Publication& publication, const std::filesystem::path& folder);

} // namespace devinst
