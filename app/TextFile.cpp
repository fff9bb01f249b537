#include "app/TextFile.h"

#include "app/Handles.h"
#include "app/RuntimeText.h"

#include <windows.h>

#include <cstdio>

namespace zt {

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
