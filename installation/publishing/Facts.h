// What the pages tell of the things that a publishing component was told.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <unknwn.h>

#include <string>

namespace devinst {

// Empty for null.
std::wstring TextFrom(BSTR text);

// "Manual.cfg (class PROC, version 3)"; what is wrong with it, where it cannot be read.
std::wstring DescribeSpecification(const std::wstring& path);

// "pump-axes.wrl (found)" or "(missing)"; "none" for an empty path.
std::wstring DescribeAxesModel(const std::wstring& path);

// "x 100, y 40"
std::wstring DescribeAxesPosition(LONG position);

// The name of the product that the site tells; "none" without a site that tells one.
std::wstring DescribeSite(IUnknown* site);

} // namespace devinst
