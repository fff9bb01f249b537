// What a folder is that may stand for another one. No Windows call.
#pragma once

#include <cstdint>

namespace zt {

enum class FolderLink {
    None,      // the folder itself
    Removable, // a symbolic link or a junction: removing it leaves what it stands for
    Opaque     // some link; removing it might remove what it stands for
};

// From the attributes and the reparse tag of a folder, as a search for it tells them.
FolderLink LinkOf(std::uint32_t attributes, std::uint32_t reparseTag);

} // namespace zt
