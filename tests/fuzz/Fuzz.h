// What the fuzz targets share: how bytes become texts, and how a broken property is told.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zt::fuzz {

using Bytes = std::span<const std::uint8_t>;

// A property that does not hold ends the fuzzer, or fails the test that replays its input.
class Broken : public std::logic_error {
    using std::logic_error::logic_error;
};

inline void Require(bool holds, const char* property) {
    if (!holds)
        throw Broken(property);
}

// One character a byte, so that inputs can be read and written; the byte 0xFF, two bytes behind it,
// stands for any other UTF-16 unit (low byte first).
std::wstring WideTextOf(Bytes bytes);

std::string TextOf(Bytes bytes);

// The parts between line ends (byte 10).
std::vector<Bytes> Lines(Bytes bytes);

// The lines as texts; at least count of them, missing ones empty.
std::vector<std::wstring> WideLines(Bytes bytes, std::size_t count);

} // namespace zt::fuzz
