// The pages of a publication, in UTF-8.
#pragma once

#include "installation/publishing/Publication.h"

#include <string>
#include <vector>

namespace devinst {

struct DocumentEntry {
    std::wstring name;
    bool hasPage; // beside the document itself
};

std::string IndexPage(const Publication& publication, const std::vector<DocumentEntry>& documents);

// A document of sections, titles, paragraphs and lists; its change marks are shown as such, and its
// figures at the scale of the settings.
std::string DocumentPage(const Publication& publication, const std::wstring& name,
                         const XmlElement& document);

std::string StyleSheet(const PublicationSettings& settings);

} // namespace devinst
