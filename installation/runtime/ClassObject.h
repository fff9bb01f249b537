#pragma once

#include "installation/runtime/Library.h"

namespace devinst {

// The class object of one class of this library; it lives as long as the library.
IClassFactory* ClassObjectOf(const ComponentClass& componentClass);

} // namespace devinst
