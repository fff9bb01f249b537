// Where a publication goes, what it is called, and what of its folder is packed or deleted. No
// Windows call.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zt {

// ---- places ----

// Folder of a publication that stays a folder.
std::wstring PublishedFolder(const std::wstring& exchangePath, const std::wstring& projectName);

// File of a publication that becomes a package.
std::wstring PackagePath(const std::wstring& exchangePath, const std::wstring& projectName);

// Description file of the specification in folder; it lies beside the folder.
std::wstring SpecificationFileName(const std::wstring& folder);

// Folder of the axes model below the installation's data folder.
std::wstring AxesFolder(const std::wstring& dataFolder, const std::wstring& axesModelPath);

// ---- names ----

struct PublicationNames {
    std::wstring first;
    std::wstring second;
};

// Names for the viewer's publication: without a first name the project's, without a second one the
// first.
PublicationNames CompleteNames(PublicationNames names, const std::wstring& projectName);

// Name for the text publication, which goes by the second name.
std::wstring TextPublicationName(const std::wstring& secondName, const std::wstring& projectName);

// ---- the published folder ----

// "." and "..", which every folder lists.
bool IsDotEntry(std::wstring_view entryName);

// Name of an entry in the archive: relative to the folder that is packed, parts joined by a
// backslash. prefix is the archive name of the entry's own folder, null for the packed folder.
std::wstring ArchiveName(const std::wstring* prefix, const std::wstring& entryName);

// What a folder is that may stand for another one.
enum class FolderLink {
    None,      // the folder itself
    Removable, // a symbolic link or a junction: removing it leaves what it stands for
    Opaque     // some link; removing it might remove what it stands for
};

// From the attributes and the reparse tag of a folder, as a search for it reports them.
FolderLink LinkOf(std::uint32_t attributes, std::uint32_t reparseTag);

// The result code (negative) that stands for a Windows error code.
std::int32_t ResultOfWin32Error(std::uint32_t error);

} // namespace zt
