// What all pages of a publication have around their content.
#pragma once

#include "installation/publishing/Publication.h"

#include <string>

namespace devinst {

// root: the way from the page's folder to the publication's ("" or "../").
std::string PageFrame(const Publication& publication, const std::string& root,
                      const std::wstring& title, const std::string& content);

// A picture of the publication.
std::string Picture(const Publication& publication, const std::string& root,
                    const std::wstring& file);

} // namespace devinst
