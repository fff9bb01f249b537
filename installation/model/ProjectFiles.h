// A project on disk, as it stands in an archive and in the work folder: "index.xml" (what names the
// project), "project.xml" (its content), "documents" and, beside the project in the work folder,
// its representations.
#pragma once

#include "installation/model/Xml.h"
#include "installation/zip/Zip.h"

#include <filesystem>
#include <string>

namespace devinst {

// The <project> element of an index: its attributes id, name, storedName, revision, specification,
// version and language.
XmlElement ProjectOf(const XmlFile& index);

// The index of an archive. Raises ZipError or ComFailure for a damaged one.
XmlFile ReadIndex(ZipReader& archive);

// Unpacks the archive's project into folder (which is emptied first) and its representations into
// another folder.
void UnpackProject(ZipReader& archive, const std::filesystem::path& folder);
void UnpackRepresentations(ZipReader& archive, const std::filesystem::path& folder);

// Writes a new archive beside path and puts it into path's place once it is whole.
void PackProject(const std::filesystem::path& path, const std::filesystem::path& folder,
                 const std::filesystem::path& representations);

// "A" gives "B", "Z" gives "AA", "Z9" gives "Z10"; empty gives "A".
std::wstring NextRevision(const std::wstring& revision);

// Whether text can name a file or folder of its own.
bool IsFileName(const std::wstring& text);

} // namespace devinst
