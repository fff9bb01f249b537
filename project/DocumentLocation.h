// Where a document that the command line names lies.
#pragma once

#include <string>

namespace zt {

struct DocumentLocation {
    std::wstring folder; // without a trailing backslash
    std::wstring fullPath;
};

// A path with a backslash stands for itself; a bare name lies in the exchange folder.
DocumentLocation LocateDocument(const std::wstring& documentPath,
                                const std::wstring& exchangeFolder);

} // namespace zt
