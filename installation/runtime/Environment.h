#pragma once

#include <string>

namespace devinst {

// The value of an environment variable, empty when it is not set.
std::wstring EnvironmentText(const wchar_t* name);

} // namespace devinst
