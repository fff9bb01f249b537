#pragma once

#include <windows.h>
#include <oleauto.h>

namespace zt {

// Looks the 3D axes model up in the installation's catalogue. *modelPath (which must hold nothing
// before the call) receives a BSTR of the caller's, never null: the model's file name, or the id
// and ".wrl" where the catalogue does not tell.
void FindAxesModel(const wchar_t* axesId, BSTR* modelPath);

} // namespace zt
