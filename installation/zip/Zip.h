// Zip files: the container (PKWARE's application note) around zlib's deflate. No archive library is
// packaged for the toolchain, and the installation needs no more than this: no encryption, no
// ZIP64 (files below 4 GiB, fewer than 65,535 entries), UTF-8 names.
#pragma once

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace devinst {

// A file that is no zip, is damaged, or cannot be written.
struct ZipError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct ZipEntry {
    std::string name; // UTF-8, with "/" between the parts
    std::uint32_t checksum = 0;
    std::uint32_t packedSize = 0;
    std::uint32_t size = 0;
    std::uint32_t offset = 0; // of the local header
    std::uint16_t method = 0; // 0 stored, 8 deflated
};

// Writes a new zip file, entry after entry, without holding a file's content in memory.
class ZipWriter {
  public:
    // Replaces a file of that name.
    explicit ZipWriter(const std::filesystem::path& path);

    void AddFile(const std::string& name, const std::filesystem::path& source);
    void AddText(const std::string& name, std::string_view content);
    // Writes the directory; without it the file is no zip.
    void Close();

  private:
    using Source = std::function<std::size_t(char* buffer, std::size_t size)>;
    void AddEntry(const std::string& name, const Source& source);
    void Write(std::string_view bytes);

    std::ofstream m_file;
    std::vector<ZipEntry> m_entries;
};

class ZipReader {
  public:
    explicit ZipReader(const std::filesystem::path& path);

    const std::vector<ZipEntry>& Entries() const { return m_entries; }
    bool Has(std::string_view name) const { return Find(name) != nullptr; }
    // The content, checked against its checksum.
    std::string Read(std::string_view name);
    // Writes every file entry whose name begins with prefix below folder, under the rest of its
    // name. A name that leads out of the folder is refused.
    void Extract(std::string_view prefix, const std::filesystem::path& folder);

  private:
    const ZipEntry* Find(std::string_view name) const;
    std::string ReadEntry(const ZipEntry& entry);
    void ReadDirectory(std::uint32_t offset, unsigned count);
    std::string Bytes(std::uint64_t offset, std::size_t size);

    std::ifstream m_file;
    std::uint64_t m_size = 0;
    std::vector<ZipEntry> m_entries;
};

} // namespace devinst
