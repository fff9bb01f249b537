// Files for the tests: those that were built with them and those that a test writes.
#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zt::test {

// A file that the build put beside the test program.
inline std::wstring FixturePath(const wchar_t* name) {
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH - 1);
    return std::filesystem::path(program).replace_filename(name).wstring();
}

// Writes the bytes as they stand, in place of what is there; folders that are missing are made.
inline void WriteFile(const std::wstring& path, std::string_view bytes) {
    std::filesystem::create_directories(std::filesystem::path(path).parent_path());
    std::ofstream file(std::filesystem::path(path), std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        throw std::runtime_error("cannot write a file of the test");
}

} // namespace zt::test
