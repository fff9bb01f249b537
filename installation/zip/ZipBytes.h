// Little-endian numbers and the signatures of a zip file's records.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace devinst::zip {

constexpr std::uint32_t LocalSignature = 0x04034b50;
constexpr std::uint32_t DirectorySignature = 0x02014b50;
constexpr std::uint32_t EndSignature = 0x06054b50;
constexpr std::size_t LocalSize = 30;
constexpr std::size_t DirectorySize = 46;
constexpr std::size_t EndSize = 22;
constexpr std::uint16_t Utf8Names = 0x0800;
constexpr std::uint16_t Version = 20;
constexpr std::uint16_t Deflated = 8;
// 1 January 1980: archives of the same content are the same bytes.
constexpr std::uint16_t Date = 0x0021;

inline void Put16(std::string& bytes, std::uint16_t value) {
    bytes += static_cast<char>(value & 0xff);
    bytes += static_cast<char>(value >> 8);
}

inline void Put32(std::string& bytes, std::uint32_t value) {
    Put16(bytes, static_cast<std::uint16_t>(value & 0xffff));
    Put16(bytes, static_cast<std::uint16_t>(value >> 16));
}

inline std::uint16_t Get16(std::string_view bytes, std::size_t at) {
    return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[at]) |
                                      static_cast<unsigned char>(bytes[at + 1]) << 8);
}

inline std::uint32_t Get32(std::string_view bytes, std::size_t at) {
    return Get16(bytes, at) | static_cast<std::uint32_t>(Get16(bytes, at + 2)) << 16;
}

} // namespace devinst::zip
