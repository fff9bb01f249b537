#include "project/ProjectRequest.h"

namespace zt {

std::wstring ArchiveFileName(const std::wstring& projectName) {
    return projectName + L".kvp";
}

DocumentLocation LocateDocument(const std::wstring& documentPath,
                                const std::wstring& exchangeFolder) {
    const std::size_t lastBackslash = documentPath.rfind(L'\\');
    if (lastBackslash == std::wstring::npos)
        return {exchangeFolder, exchangeFolder + L"\\" + documentPath};
    return {documentPath.substr(0, lastBackslash), documentPath};
}

} // namespace zt
