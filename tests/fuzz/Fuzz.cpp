#include "tests/fuzz/Fuzz.h"

#include <algorithm>

namespace zt::fuzz {

namespace {

constexpr std::uint8_t Escape = 0xFF;
constexpr std::uint8_t LineEnd = '\n';

} // namespace

std::wstring WideTextOf(Bytes bytes) {
    std::wstring text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] == Escape && i + 2 < bytes.size()) {
            text += static_cast<wchar_t>(bytes[i + 1] | (bytes[i + 2] << 8));
            i += 2;
        } else {
            text += static_cast<wchar_t>(bytes[i]);
        }
    }
    return text;
}

std::string TextOf(Bytes bytes) {
    return {bytes.begin(), bytes.end()};
}

std::vector<Bytes> Lines(Bytes bytes) {
    std::vector<Bytes> lines;
    auto begin = bytes.begin();
    while (true) {
        const auto end = std::find(begin, bytes.end(), LineEnd);
        lines.emplace_back(begin, end);
        if (end == bytes.end())
            return lines;
        begin = end + 1;
    }
}

std::vector<std::wstring> WideLines(Bytes bytes, std::size_t count) {
    std::vector<std::wstring> texts;
    for (const Bytes line : Lines(bytes))
        texts.push_back(WideTextOf(line));
    texts.resize(std::max(texts.size(), count));
    return texts;
}

} // namespace zt::fuzz
