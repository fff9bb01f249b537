// Registration of the component libraries.
#pragma once

#include <filesystem>
#include <vector>

namespace devinst {

// The libraries in folder ("zt-*.dll"), sorted by name. Raises SetupError when there is none.
std::vector<std::filesystem::path> ComponentLibraries(const std::filesystem::path& folder);

// Calls the library's own DllRegisterServer or DllUnregisterServer; raises SetupError when it
// cannot be loaded, has no such function or fails.
void RegisterLibrary(const std::filesystem::path& library);
void UnregisterLibrary(const std::filesystem::path& library);

} // namespace devinst
