#pragma once

#include "installation/runtime/Library.h"

#include <windows.h>

#include <span>

namespace devinst {

// Writes the classes to the registry as in-process servers of that library (apartment-threaded),
// with their ProgIDs.
HRESULT RegisterClasses(HINSTANCE library, std::span<const ComponentClass> classes);
HRESULT UnregisterClasses(std::span<const ComponentClass> classes);

} // namespace devinst
