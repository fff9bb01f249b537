#include "installation/publishing/Publication.h"

#include "installation/publishing/Pages.h"
#include "installation/runtime/Call.h"

#include <fstream>
#include <optional>

namespace devinst {

namespace fs = std::filesystem;

namespace {

[[noreturn]] void ThrowUnwritten(const fs::path& path) {
    throw ComFailure{HRESULT_FROM_WIN32(ERROR_WRITE_FAULT),
                     L"The publication cannot be written: " + path.wstring()};
}

void MakeFolder(const fs::path& folder) {
    std::error_code failure;
    fs::create_directories(folder, failure);
    if (!fs::is_directory(folder))
        ThrowUnwritten(folder);
}

void WriteFile(const fs::path& path, const std::string& content) {
    std::ofstream file(path, std::ios::binary);
    file << content;
    file.close();
    if (!file)
        ThrowUnwritten(path);
}

void CopyInto(const fs::path& source, const fs::path& folder) {
    const fs::path target = folder / source.filename();
    if (!CopyFileW(source.c_str(), target.c_str(), FALSE))
        ThrowUnwritten(target);
}

void CopyPictures(const fs::path& source, const fs::path& folder) {
    std::error_code none;
    for (const fs::directory_entry& entry : fs::directory_iterator(source, none)) {
        if (entry.is_regular_file())
            CopyInto(entry.path(), folder);
    }
}

std::optional<XmlFile> ReadDocument(const fs::path& file) {
    try {
        return XmlFile::FromFile(file, Blanks::Kept);
    } catch (const ComFailure&) {
        return std::nullopt; // not XML: the document itself is published alone
    }
}

class Writer {
  public:
    Writer(const Publication& publication, fs::path folder)
        : m_publication(publication), m_folder(std::move(folder)) {}

    DocumentEntry WriteDocument(const PublishedDocument& document) {
        CopyInto(document.file, m_folder / L"documents");
        const std::optional<XmlFile> content = ReadDocument(document.file);
        if (content)
            WriteFile(m_folder / L"documents" / (document.name + L".html"),
                      DocumentPage(m_publication, document.name, content->Root()));
        return {document.name, content.has_value()};
    }

  private:
    const Publication& m_publication;
    fs::path m_folder;
};

} // namespace

void Publish(const Publication& publication, const fs::path& folder) {
    MakeFolder(folder);
    for (const wchar_t* part : {L"resources", L"pictures"})
        MakeFolder(folder / part);
    Writer writer(publication, folder);
    WriteFile(folder / L"resources" / L"style.css", StyleSheet(publication.settings));
    CopyPictures(publication.project.representations, folder / L"pictures");
    std::vector<DocumentEntry> documents;
    if (publication.settings.showDocuments && !publication.project.documents.empty()) {
        MakeFolder(folder / L"documents");
        for (const PublishedDocument& document : publication.project.documents)
            documents.push_back(writer.WriteDocument(document));
    }
    WriteFile(folder / L"index.html", IndexPage(publication, documents));
}

} // namespace devinst
