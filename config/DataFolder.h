#pragma once

#include <string>

namespace zt {

// The installation's data folder, below which the specifications and the axes catalogue lie: the
// registry's, or the folder for all users' application data where the registry names none.
std::wstring GetDataFolder();

} // namespace zt
