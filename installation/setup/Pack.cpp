#include "installation/setup/Pack.h"

#include "installation/runtime/Utf8.h"
#include "installation/setup/SetupError.h"
#include "installation/zip/Zip.h"

#include <map>

namespace devinst {

namespace fs = std::filesystem;

namespace {

std::map<std::string, fs::path> FilesBelow(const fs::path& folder) {
    std::map<std::string, fs::path> files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file())
            files[ToUtf8(entry.path().lexically_relative(folder).generic_wstring())] = entry.path();
    }
    return files;
}

} // namespace

void Pack(const PackOrder& order) {
    if (!fs::is_directory(order.folder))
        throw SetupError("no folder " + ToUtf8(order.folder.wstring()));
    // Listed first: the archive may lie in the folder itself.
    const std::map<std::string, fs::path> files = FilesBelow(order.folder);
    ZipWriter archive(order.archive);
    for (const auto& [name, path] : files)
        archive.AddFile(name, path);
    archive.Close();
}

} // namespace devinst
