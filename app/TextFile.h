// The plain-text files that tell of a run. They are open only while a text is written, so that
// other processes can read them in between.
#pragma once

#include <string>
#include <string_view>

namespace zt {

// Makes an empty file, in place of any that stands there. Returns whether it could be made.
bool CreateEmptyFile(const std::wstring& path);

// Appends the text in the runtime's default character set, with each line feed as carriage return
// and line feed; the file is made where it is missing. A text that cannot be written is dropped.
void AppendText(const std::wstring& path, std::wstring_view text);

} // namespace zt
