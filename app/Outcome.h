// How a run ends: the message text of its failure, and the pair of files by which the
// content-management client sees how it stands.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace zt {

// The one place that turns what the program raises on purpose into a message text. Performs the
// step. Returns the message of the failure that it raised (a constant wide text, a CString, an OLE
// exception, whose message is cut to 1023 characters), none when it raised none. An exception of
// any other type passes through.
std::optional<std::wstring> FailureOf(const std::function<void()>& step);

// The status files: base + "_ERROR" while the run goes on or when it has failed, base + "_DONE"
// when it has succeeded. None of these functions fails; what the file system refuses is left as it
// is.

// An empty "_ERROR" file, and no "_DONE" of an earlier run.
void MarkRunning(const std::wstring& statusBase);

// Appends the text of a failure to the "_ERROR" file.
void AppendFailure(const std::wstring& statusBase, std::wstring_view message);

// "_ERROR" becomes "_DONE".
void MarkSucceeded(const std::wstring& statusBase);

} // namespace zt
