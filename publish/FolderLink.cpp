#include "publish/FolderLink.h"

namespace zt {

namespace {

constexpr std::uint32_t ReparsePoint = 0x00000400;
constexpr std::uint32_t StandsForAnother = 0x20000000; // in a reparse tag

} // namespace

FolderLink LinkOf(std::uint32_t attributes, std::uint32_t reparseTag) {
    if ((attributes & ReparsePoint) == 0)
        return FolderLink::None;
    // Some file systems tell of a reparse point but not of which kind.
    if (reparseTag == 0)
        return FolderLink::Opaque;
    // Reparse points of other kinds (a folder kept in a cloud, say) are the thing itself.
    return (reparseTag & StandsForAnother) != 0 ? FolderLink::Removable : FolderLink::None;
}

} // namespace zt
