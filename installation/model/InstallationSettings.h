// Where this installation keeps its files, from the machine's registry (the key
// "Software\Morvenit\DevelopmentInstallation").
#pragma once

#include <filesystem>

namespace devinst {

std::filesystem::path ConfigurationFilePath();
// Holds "Projects" (the imported projects) and "Representations".
std::filesystem::path WorkFolderPath();

} // namespace devinst
