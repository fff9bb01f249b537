// Where a publication goes and what it is called. No Windows call.
#pragma once

#include <string>

namespace zt {

// Folder of a publication that stays a folder.
std::wstring PublishedFolder(const std::wstring& exchangePath, const std::wstring& projectName);

// File of a publication that becomes a package.
std::wstring PackagePath(const std::wstring& exchangePath, const std::wstring& projectName);

// Description file of the specification in folder; it lies beside the folder.
std::wstring SpecificationFileName(const std::wstring& folder);

// Folder of the axes model below the installation's data folder.
std::wstring AxesFolder(const std::wstring& dataFolder, const std::wstring& axesModelPath);

struct PublicationNames {
    std::wstring first;
    std::wstring second;
};

// Names for the viewer's publication: without a first name the project's, without a second one the
// first.
PublicationNames CompleteNames(PublicationNames names, const std::wstring& projectName);

// Name for the text publication, which goes by the second name.
std::wstring TextPublicationName(const std::wstring& secondName, const std::wstring& projectName);

} // namespace zt
