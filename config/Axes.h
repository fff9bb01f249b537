// The axes that a specification names for its published illustrations.
#pragma once

#include <cstdint>
#include <string>

namespace zt {

// Looks the 3D axes model up in the installation's catalogue. Returns the model's file name, or the
// id and ".wrl" where the catalogue has none.
std::wstring FindAxesModel(const std::wstring& axesId);

// Where the axes stand: x in the low 16 bits, y in the high 16 bits. Here x 85, y 15.
constexpr std::uint32_t DefaultAxesPosition = 0x000F0055;

// Replaces x. All 32 bits of the value go in: one that is negative or above 65535 changes y too.
constexpr std::uint32_t WithAxesX(std::uint32_t position, std::int32_t x) {
    return (position & 0xFFFF0000U) | static_cast<std::uint32_t>(x);
}

// Replaces y; only the low 16 bits of the value fit.
constexpr std::uint32_t WithAxesY(std::uint32_t position, std::int32_t y) {
    return (position & 0x0000FFFFU) | (static_cast<std::uint32_t>(y) << 16);
}

} // namespace zt
