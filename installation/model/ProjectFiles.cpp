#include "installation/model/ProjectFiles.h"

#include "installation/runtime/Call.h"
#include "installation/runtime/Trace.h"

#include <algorithm>
#include <system_error>
#include <utility>
#include <vector>

namespace devinst {

namespace fs = std::filesystem;

namespace {

std::wstring FromUtf8(const std::string& text) {
    const int length = static_cast<int>(text.size());
    std::wstring wide(
        static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0)),
        L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(),
                        static_cast<int>(wide.size()));
    return wide;
}

// The files below folder with their paths inside it, in a stable order.
std::vector<std::pair<std::string, fs::path>> FilesBelow(const fs::path& folder) {
    std::vector<std::pair<std::string, fs::path>> files;
    if (!fs::is_directory(folder))
        return files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files.emplace_back(ToUtf8(fs::relative(entry.path(), folder).generic_wstring()),
                               entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

void AddFolder(ZipWriter& archive, const std::string& prefix, const fs::path& folder) {
    for (const auto& [name, path] : FilesBelow(folder))
        archive.AddFile(prefix + name, path);
}

// The text without byte-order mark and XML declaration: its encoding is no longer what that says.
std::string WithoutDeclaration(std::string text) {
    if (text.starts_with("\xEF\xBB\xBF"))
        text.erase(0, 3);
    const std::size_t end = text.find("?>");
    if (text.starts_with("<?xml") && end != std::string::npos)
        text.erase(0, end + 2);
    return text;
}

std::wstring NextNumber(std::wstring number) {
    for (std::size_t i = number.size(); i > 0; --i) {
        wchar_t& digit = number[i - 1];
        if (digit != L'9') {
            ++digit;
            return number;
        }
        digit = L'0';
    }
    return L"1" + number;
}

// A file beside the one that it is to replace; it goes when it did not come to that.
class UnfinishedFile {
  public:
    explicit UnfinishedFile(fs::path path) : m_path(std::move(path)) { m_path += L".new"; }
    ~UnfinishedFile() {
        std::error_code ignored;
        fs::remove(m_path, ignored);
    }
    UnfinishedFile(const UnfinishedFile&) = delete;
    UnfinishedFile& operator=(const UnfinishedFile&) = delete;

    const fs::path& Path() const { return m_path; }

  private:
    fs::path m_path;
};

} // namespace

XmlElement ProjectOf(const XmlFile& index) {
    XmlElement project = Child(index.Root(), L"project");
    if (project == nullptr || Attribute(project, L"name").empty() ||
        !IsFileName(Attribute(project, L"id")))
        throw ComFailure{E_FAIL, L"The index names no project."};
    return project;
}

XmlFile ReadIndex(ZipReader& archive) {
    return XmlFile::FromText(FromUtf8(WithoutDeclaration(archive.Read("index.xml"))));
}

void UnpackProject(ZipReader& archive, const fs::path& folder) {
    fs::remove_all(folder);
    archive.Extract("", folder);
    fs::remove_all(folder / L"representations");
}

void UnpackRepresentations(ZipReader& archive, const fs::path& folder) {
    fs::remove_all(folder);
    fs::create_directories(folder);
    archive.Extract("representations/", folder);
}

void PackProject(const fs::path& path, const fs::path& folder, const fs::path& representations) {
    const UnfinishedFile unfinished(path);
    {
        ZipWriter archive(unfinished.Path());
        AddFolder(archive, "", folder);
        AddFolder(archive, "representations/", representations);
        archive.Close();
    }
    if (!MoveFileExW(unfinished.Path().c_str(), path.c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        throw ComFailure{HRESULT_FROM_WIN32(GetLastError()),
                         L"The archive cannot be replaced: " + path.wstring()};
}

std::wstring NextRevision(const std::wstring& revision) {
    if (revision.empty())
        return L"A";
    const std::size_t digits = revision.find_last_not_of(L"0123456789") + 1;
    if (digits < revision.size())
        return revision.substr(0, digits) + NextNumber(revision.substr(digits));
    std::wstring next = revision;
    for (std::size_t i = next.size(); i > 0; --i) {
        if (next[i - 1] != L'Z') {
            ++next[i - 1];
            return next;
        }
        next[i - 1] = L'A';
    }
    return L"A" + next;
}

bool IsFileName(const std::wstring& text) {
    return !text.empty() && text != L"." && text != L".." &&
           text.find_first_of(L"\\/:*?\"<>|") == std::wstring::npos;
}

} // namespace devinst
