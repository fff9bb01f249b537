// The message that tells the content-management client what happened.
#pragma once

#include <string>

namespace zt {

// The fields are joined by "|" without escaping, so an argument that holds a "|" makes further
// fields. A null argument is none; an empty one is an empty field.
std::wstring BuildActionMessage(const wchar_t* action, const wchar_t* argument);

} // namespace zt
