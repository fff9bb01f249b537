#pragma once

#include "installation/model/Xml.h"

#include <filesystem>
#include <string>

namespace devinst {

// What a document takes over from its project.
struct ProjectFacts {
    std::wstring title; // empty: the document keeps its own
    std::wstring revision;
};

// A document in the editor's memory. Changes that others made are marked in it: <insert> around
// what came in, <delete> around what is to go.
class EditedDocument {
  public:
    // Reads the file and brings what the document takes over from the project up to date. Raises
    // ComFailure when the file cannot be read as XML.
    EditedDocument(std::filesystem::path path, ProjectFacts facts);

    bool HasUnsavedChanges() const { return m_changed; }

    // Accepts all changes: what is marked as deleted goes, what is marked as inserted stays.
    void RemoveChangeMarks();
    // Notes on the document for which revision it is saved, and how many times it has been saved
    // for the content-management system.
    void StampSave();
    // Writes the document back to its file.
    void Save();

  private:
    void TakeOver(const wchar_t* attribute, const std::wstring& value);

    std::filesystem::path m_path;
    ProjectFacts m_facts;
    XmlFile m_file;
    bool m_changed = false;
};

} // namespace devinst
