#pragma once

#include "installation/setup/Options.h"

namespace devinst {

// Writes a zip file from the files below a folder, in the order of their names. Raises SetupError
// for a folder that is not there, ZipError for an archive that cannot be written.
void Pack(const PackOrder& order);

} // namespace devinst
