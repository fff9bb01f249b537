#pragma once

#include <windows.h>
#include <oleauto.h>

#include <string>

namespace devinst {

// The table in which the administration lists projects: a two-dimensional array of BSTR with one
// row, first at the indices {0, 0} and second at {0, 1}.
void GiveProjectTable(const std::wstring& first, const std::wstring& second, VARIANT* table);

} // namespace devinst
