// Forms of the texts that the registry and the installed product hold. No Windows call.
#pragma once

#include <string>

namespace zt {

// A file version in dotted form: "1, 4, 0, 12" becomes "1.4.0.12".
std::wstring DottedVersion(const std::wstring& version);

// The path in a command: what stands between a first double quote and the last one, or the whole
// text when it does not begin with a quote. A single quote at the start leaves nothing.
std::wstring PathOfCommand(const std::wstring& command);

// Name of the product's registry key, relative to the root; the version, if it is not empty, is the
// level below the product.
std::wstring ProductKeyName(const std::wstring& productName, const std::wstring& version);

} // namespace zt
