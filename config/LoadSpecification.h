#pragma once

namespace zt {

class CZTInvisible;

// Finds the specification in the installation's data folder, checks that it is as new as the
// project requires (null: any), has the kernel load it and leaves its class, handlers and axes on
// the application object. Every failure is reported through LogError; false when the
// specification is not loaded.
bool LoadSpecification(CZTInvisible& app, const wchar_t* specName, const wchar_t* requiredVersion);

} // namespace zt
