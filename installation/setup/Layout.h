// The files and registry values of a development installation.
#pragma once

#include <filesystem>

namespace devinst {

// Lays the installation's files out below root: data, work, exchange, publications,
// product and configuration.xml. What is there already is overwritten, the rest left alone. kit is
// the folder of zt-devsetup.exe: it holds data, zt-handlers.dll and ZTProduct.exe. root is a full
// path. Raises SetupError.
void LayOut(const std::filesystem::path& kit, const std::filesystem::path& root);

// Points the machine's registry values at the files below root. Raises SetupError.
void WriteRegistry(const std::filesystem::path& root);

// Writes what the publishing components of every product start from to the machine's registry, and
// makes the product's key of the user, without settings. Raises SetupError.
void WriteProductSettings();

} // namespace devinst
