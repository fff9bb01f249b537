#include "installation/zip/Zip.h"
#include "installation/zip/ZipBytes.h"

#include <zlib.h>

#include <algorithm>
#include <array>
#include <limits>

namespace devinst {

using namespace zip;

namespace {

constexpr std::size_t BlockSize = 64 * 1024;

// A raw deflate stream, as zip files hold it.
class Deflater {
  public:
    Deflater() {
        if (deflateInit2(&m_stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, 8,
                         Z_DEFAULT_STRATEGY) != Z_OK)
            throw ZipError("no memory to compress");
    }
    ~Deflater() { deflateEnd(&m_stream); }
    Deflater(const Deflater&) = delete;
    Deflater& operator=(const Deflater&) = delete;

    // Compresses one block and hands the output on.
    template <typename Sink>
    void Run(std::string_view block, bool last, const Sink& sink) {
        m_stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(block.data()));
        m_stream.avail_in = static_cast<uInt>(block.size());
        do {
            m_stream.next_out = reinterpret_cast<Bytef*>(m_output.data());
            m_stream.avail_out = static_cast<uInt>(m_output.size());
            deflate(&m_stream, last ? Z_FINISH : Z_NO_FLUSH);
            sink(std::string_view(m_output.data(), m_output.size() - m_stream.avail_out));
        } while (m_stream.avail_out == 0);
    }

  private:
    z_stream m_stream = {};
    std::array<char, BlockSize> m_output = {};
};

void PutSizes(std::string& bytes, const ZipEntry& entry) {
    Put32(bytes, entry.checksum);
    Put32(bytes, entry.packedSize);
    Put32(bytes, entry.size);
}

// What the local header and the directory's header have in common.
std::string CommonHeader(const ZipEntry& entry) {
    std::string bytes;
    Put16(bytes, Version);
    Put16(bytes, Utf8Names);
    Put16(bytes, entry.method);
    Put16(bytes, 0); // time
    Put16(bytes, Date);
    PutSizes(bytes, entry);
    Put16(bytes, static_cast<std::uint16_t>(entry.name.size()));
    Put16(bytes, 0); // no extra field
    return bytes;
}

std::string LocalHeader(const ZipEntry& entry) {
    std::string bytes;
    Put32(bytes, LocalSignature);
    return bytes + CommonHeader(entry) + entry.name;
}

std::string DirectoryHeader(const ZipEntry& entry) {
    std::string bytes;
    Put32(bytes, DirectorySignature);
    Put16(bytes, Version);
    bytes += CommonHeader(entry);
    Put16(bytes, 0); // no comment
    Put16(bytes, 0); // first disk
    Put16(bytes, 0); // internal attributes
    Put32(bytes, 0); // external attributes
    Put32(bytes, entry.offset);
    return bytes + entry.name;
}

} // namespace

ZipWriter::ZipWriter(const std::filesystem::path& path)
    : m_file(path, std::ios::binary | std::ios::trunc) {
    if (!m_file)
        throw ZipError("the archive cannot be created");
}

void ZipWriter::AddFile(const std::string& name, const std::filesystem::path& source) {
    std::ifstream file(source, std::ios::binary);
    if (!file)
        throw ZipError("a file for the archive cannot be read");
    AddEntry(name, [&file](char* buffer, std::size_t size) {
        file.read(buffer, static_cast<std::streamsize>(size));
        return static_cast<std::size_t>(file.gcount());
    });
}

void ZipWriter::AddText(const std::string& name, std::string_view content) {
    AddEntry(name, [&content](char* buffer, std::size_t size) {
        const std::size_t taken = content.copy(buffer, size);
        content.remove_prefix(taken);
        return taken;
    });
}

// The sizes stand in the header, which is written a second time once they are known.
void ZipWriter::AddEntry(const std::string& name, const Source& source) {
    if (name.size() > std::numeric_limits<std::uint16_t>::max())
        throw ZipError("a name is too long for an archive");
    ZipEntry entry;
    entry.name = name;
    entry.method = Deflated;
    const std::uint64_t start = static_cast<std::uint64_t>(m_file.tellp());
    entry.offset = static_cast<std::uint32_t>(start);
    Write(LocalHeader(entry));

    Deflater deflater;
    std::uint64_t size = 0;
    std::uint64_t packed = 0;
    std::array<char, BlockSize> block = {};
    for (bool last = false; !last;) {
        const std::size_t taken = source(block.data(), block.size());
        last = taken == 0;
        size += taken;
        entry.checksum = static_cast<std::uint32_t>(
            crc32(entry.checksum, reinterpret_cast<const Bytef*>(block.data()),
                  static_cast<uInt>(taken)));
        deflater.Run({block.data(), taken}, last, [&](std::string_view output) {
            packed += output.size();
            Write(output);
        });
    }
    if (std::max(size, start + packed) >= std::numeric_limits<std::uint32_t>::max())
        throw ZipError("the archive grows too large");
    entry.size = static_cast<std::uint32_t>(size);
    entry.packedSize = static_cast<std::uint32_t>(packed);
    m_file.seekp(static_cast<std::streamoff>(start));
    Write(LocalHeader(entry));
    m_file.seekp(0, std::ios::end);
    m_entries.push_back(std::move(entry));
}

void ZipWriter::Close() {
    if (m_entries.size() >= std::numeric_limits<std::uint16_t>::max())
        throw ZipError("the archive has too many entries");
    const auto start = static_cast<std::uint32_t>(m_file.tellp());
    for (const ZipEntry& entry : m_entries)
        Write(DirectoryHeader(entry));
    const auto end = static_cast<std::uint32_t>(m_file.tellp());
    std::string bytes;
    Put32(bytes, EndSignature);
    Put32(bytes, 0); // one disk only
    Put16(bytes, static_cast<std::uint16_t>(m_entries.size()));
    Put16(bytes, static_cast<std::uint16_t>(m_entries.size()));
    Put32(bytes, end - start);
    Put32(bytes, start);
    Put16(bytes, 0); // no comment
    Write(bytes);
    m_file.close();
    if (m_file.fail())
        throw ZipError("the archive cannot be written");
}

void ZipWriter::Write(std::string_view bytes) {
    m_file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!m_file)
        throw ZipError("the archive cannot be written");
}

} // namespace devinst
