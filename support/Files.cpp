#include "support/Files.h"

#include "support/Handles.h"
#include "support/Paths.h"
#include "support/Text.h"

#include <windows.h>
#include <shlobj.h>

#include <cstdio>

namespace zt {

bool Exists(const wchar_t* path) {
    return path != nullptr && GetFileAttributesW(path) != INVALID_FILE_ATTRIBUTES;
}

bool EnsureFolder(const std::wstring& path, bool namesFile) {
    const std::wstring folder = WithoutTrailingBackslash(namesFile ? FolderOfFile(path) : path);
    if (Exists(folder.c_str()))
        return true;
    SHCreateDirectory(nullptr, folder.c_str());
    return Exists(folder.c_str());
}

bool CreateEmptyFile(const std::wstring& path) {
    return HoldHandle(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr)) != nullptr;
}

void AppendText(const std::wstring& path, std::wstring_view text) {
    const StreamHolder file(_wfopen(path.c_str(), L"a+"));
    if (file == nullptr)
        return;
    const std::string bytes = ToRuntimeText(text);
    std::fwrite(bytes.data(), 1, bytes.size(), file.get());
}

} // namespace zt
