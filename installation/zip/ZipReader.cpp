#include "installation/zip/Zip.h"
#include "installation/zip/ZipBytes.h"

#include <zlib.h>

#include <algorithm>

namespace devinst {

using namespace zip;

namespace {

constexpr std::size_t LongestComment = 65535;
// More than any sample or test needs; an archive that claims more is taken for a damaged one.
constexpr std::uint32_t LargestEntry = 512U * 1024 * 1024;

std::string Inflated(const std::string& packed, std::uint32_t size) {
    std::string content(size, '\0');
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(packed.data()));
    stream.avail_in = static_cast<uInt>(packed.size());
    stream.next_out = reinterpret_cast<Bytef*>(content.data());
    stream.avail_out = static_cast<uInt>(content.size());
    if (inflateInit2(&stream, -MAX_WBITS) != Z_OK)
        throw ZipError("no memory to decompress");
    const int outcome = inflate(&stream, Z_FINISH);
    inflateEnd(&stream);
    if (outcome != Z_STREAM_END || stream.total_out != size)
        throw ZipError("an entry of the archive is damaged");
    return content;
}

// Whether a name stays below the folder that it is extracted to.
bool IsHarmless(std::string_view name) {
    if (name.empty() || name.front() == '/' || name.find_first_of("\\:") != std::string_view::npos)
        return false;
    for (std::size_t start = 0; start <= name.size();) {
        const std::size_t end = std::min(name.find('/', start), name.size());
        if (name.substr(start, end - start) == "..")
            return false;
        start = end + 1;
    }
    return true;
}

std::filesystem::path PathOf(std::string_view name) {
    return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

} // namespace

ZipReader::ZipReader(const std::filesystem::path& path) : m_file(path, std::ios::binary) {
    if (!m_file)
        throw ZipError("the archive cannot be read");
    m_file.seekg(0, std::ios::end);
    m_size = static_cast<std::uint64_t>(std::max<std::streamoff>(m_file.tellg(), 0));
    const std::size_t tail =
        static_cast<std::size_t>(std::min<std::uint64_t>(m_size, EndSize + LongestComment));
    const std::string bytes = Bytes(m_size - tail, tail);
    std::string signature;
    Put32(signature, EndSignature);
    const std::size_t end = bytes.rfind(signature);
    if (end == std::string::npos || end + EndSize > bytes.size())
        throw ZipError("the file is no archive");
    ReadDirectory(Get32(bytes, end + 16), Get16(bytes, end + 10));
}

void ZipReader::ReadDirectory(std::uint32_t offset, unsigned count) {
    std::uint64_t at = offset;
    for (unsigned i = 0; i < count; ++i) {
        const std::string header = Bytes(at, DirectorySize);
        if (Get32(header, 0) != DirectorySignature)
            throw ZipError("the archive's directory is damaged");
        ZipEntry entry;
        entry.method = Get16(header, 10);
        entry.checksum = Get32(header, 16);
        entry.packedSize = Get32(header, 20);
        entry.size = Get32(header, 24);
        entry.offset = Get32(header, 42);
        entry.name = Bytes(at + DirectorySize, Get16(header, 28));
        at += DirectorySize + Get16(header, 28) + Get16(header, 30) + Get16(header, 32);
        m_entries.push_back(std::move(entry));
    }
}

const ZipEntry* ZipReader::Find(std::string_view name) const {
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const ZipEntry& entry) { return entry.name == name; });
    return found != m_entries.end() ? &*found : nullptr;
}

std::string ZipReader::Read(std::string_view name) {
    const ZipEntry* const entry = Find(name);
    if (entry == nullptr)
        throw ZipError("the archive has no " + std::string(name));
    return ReadEntry(*entry);
}

std::string ZipReader::ReadEntry(const ZipEntry& entry) {
    if (entry.size > LargestEntry || entry.packedSize > LargestEntry)
        throw ZipError("an entry of the archive is too large");
    const std::string header = Bytes(entry.offset, LocalSize);
    if (Get32(header, 0) != LocalSignature)
        throw ZipError("an entry of the archive is damaged");
    const std::uint64_t start =
        entry.offset + std::uint64_t{LocalSize} + Get16(header, 26) + Get16(header, 28);
    std::string content = Bytes(start, entry.packedSize);
    if (entry.method == Deflated)
        content = Inflated(content, entry.size);
    else if (entry.method != 0)
        throw ZipError("an entry of the archive is compressed in an unknown way");
    const auto checksum =
        crc32(0, reinterpret_cast<const Bytef*>(content.data()), static_cast<uInt>(content.size()));
    if (checksum != entry.checksum)
        throw ZipError("an entry of the archive is damaged");
    return content;
}

void ZipReader::Extract(std::string_view prefix, const std::filesystem::path& folder) {
    for (const ZipEntry& entry : m_entries) {
        if (!entry.name.starts_with(prefix) || entry.name.ends_with('/'))
            continue;
        const std::string_view rest = std::string_view(entry.name).substr(prefix.size());
        if (!IsHarmless(rest))
            throw ZipError("the archive has a name that leads out of it");
        const std::filesystem::path target = folder / PathOf(rest);
        std::filesystem::create_directories(target.parent_path());
        const std::string content = ReadEntry(entry);
        std::ofstream file(target, std::ios::binary | std::ios::trunc);
        file.write(content.data(), static_cast<std::streamsize>(content.size()));
        if (!file.flush())
            throw ZipError("a file of the archive cannot be written");
    }
}

std::string ZipReader::Bytes(std::uint64_t offset, std::size_t size) {
    if (offset > m_size || size > m_size - offset)
        throw ZipError("the archive is cut off");
    std::string bytes(size, '\0');
    m_file.clear();
    m_file.seekg(static_cast<std::streamoff>(offset));
    m_file.read(bytes.data(), static_cast<std::streamsize>(size));
    if (static_cast<std::size_t>(m_file.gcount()) != size)
        throw ZipError("the archive is cut off");
    return bytes;
}

} // namespace devinst
