#pragma once

#include <windows.h>
#include <oleauto.h>

// Reads one of the properties that a container keeps for all its controls, by its standard
// identifier: a control at run time, in the user's language and the system's window colours, with
// none of a designer's marks. value must be empty. DISP_E_MEMBERNOTFOUND for a property that the
// container does not keep.
HRESULT ReadAmbientProperty(DISPID id, VARIANT* value);
