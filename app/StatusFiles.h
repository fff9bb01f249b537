// The pair of files by which the content-management client sees how a run stands: base + "_ERROR"
// while it goes on or when it has failed, base + "_DONE" when it has succeeded. Nothing here fails;
// what the file system refuses is left as it is.
#pragma once

#include <string>
#include <string_view>

namespace zt {

// An empty "_ERROR" file, and no "_DONE" of an earlier run.
void MarkRunning(const std::wstring& statusBase);

// Appends the text of a failure to the "_ERROR" file.
void AppendFailure(const std::wstring& statusBase, std::wstring_view message);

// "_ERROR" becomes "_DONE".
void MarkSucceeded(const std::wstring& statusBase);

} // namespace zt
