#include "support/Paths.h"

namespace zt {

std::wstring WithoutTrailingBackslash(std::wstring_view path) {
    if (path.ends_with(L'\\'))
        path.remove_suffix(1);
    return std::wstring(path);
}

std::wstring FolderOfFile(std::wstring_view filePath) {
    return std::wstring(filePath.substr(0, filePath.rfind(L'\\') + 1));
}

} // namespace zt
