// Selection paths into the XML files, in XPath.
#pragma once

#include <optional>
#include <string>

namespace zt {

// The configuration of that language, wherever it stands in a description file; and the model file
// of that axes id in the axes catalogue. None for a text that XPath cannot hold between the quotes
// of the path (the quote itself, control characters): it selects nothing, and a malformed path
// must not reach the selection, which some parsers do not survive.
std::optional<std::wstring> ConfigurationOfLanguage(const std::wstring& language);
std::optional<std::wstring> ModelFileOfAxes(const std::wstring& axesId);

} // namespace zt
