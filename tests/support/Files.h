// Files as a test sees them: bytes, not texts.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zt::test {

inline bool Exists(const std::wstring& path) {
    std::error_code ignored;
    return std::filesystem::exists(path, ignored);
}

// What the file holds; "(no file)" when there is none.
inline std::string BytesOf(const std::wstring& path) {
    std::ifstream file(std::filesystem::path(path), std::ios::binary);
    if (!file)
        return "(no file)";
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

inline void WriteBytes(const std::wstring& path, const std::string& bytes) {
    std::ofstream(std::filesystem::path(path), std::ios::binary) << bytes;
}

} // namespace zt::test
