// Files and folders as a run needs them. Text files are open only while a text is written, so that
// other processes can read them in between.
#pragma once

#include <string>
#include <string_view>

namespace zt {

// Whether something of that name, a file or a folder, is there. Null is no name.
bool Exists(const wchar_t* path);

// Makes sure that the folder (with namesFile: the folder of the file) exists, creating every
// missing level. Anything of that name counts, a file as well. Returns whether it exists now; an
// empty path does not. Only full paths are created.
bool EnsureFolder(const std::wstring& path, bool namesFile);

// Makes an empty file, in place of any that stands there. Returns whether it could be made.
bool CreateEmptyFile(const std::wstring& path);

// Appends the text in the runtime's default character set, with each line feed as carriage return
// and line feed; the file is made where it is missing. A text that cannot be written is dropped.
void AppendText(const std::wstring& path, std::wstring_view text);

} // namespace zt
