// The command line of zt-devsetup.
#pragma once

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace devinst {

struct PackOrder {
    std::filesystem::path folder;
    std::filesystem::path archive;
};

// What to do, in the order in which it is done.
struct SetupOptions {
    bool help = false;
    bool unregisterLibraries = false;
    bool registerLibraries = false;
    std::optional<std::filesystem::path> root;
    std::vector<PackOrder> packs;
};

// A command line without sense.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// arguments: without the program's name. Raises UsageError, also when there is nothing to do.
SetupOptions ParseOptions(const std::vector<std::wstring>& arguments);

extern const char* const Usage;

} // namespace devinst
