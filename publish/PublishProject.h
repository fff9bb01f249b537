// The publication of a project, beside its archive.
#pragma once

#include "components/SpecificationClass.h"
#include "components/contracts/Handlers.h"
#include "components/contracts/Kernel.h"
#include "publish/PropBag.h"
#include "support/RunLog.h"

#include <windows.h>
#include <comdef.h>
#include <oleidl.h>

#include <cstdint>
#include <string>

namespace zt {

// What a publication reads from its run. All references are borrowed.
struct Publication {
    KernelAdmin* kernel;
    KernelProject* project;       // open and saved
    ExportHandler* exportHandler; // null: the specification has none
    IOleClientSite* site;         // for the components that take one
    RunLog& log;

    SpecificationClass specificationClass;
    std::wstring projectName;  // of the published folder or file
    std::wstring exchangePath; // where that stands; without a trailing backslash
    bool isPackage;            // one file instead of a folder

    _bstr_t language;
    _bstr_t axesModelPath;      // empty: the specification has no axes
    std::uint32_t axesPosition; // x in the lower, y in the upper 16 bits
    std::wstring dataFolder;    // the installation's
    SettingsKeys settings;      // of the product that works on such projects
};

// Publishes the project. Returns a success code or raises a message text.
HRESULT Publish(const Publication& publication);

} // namespace zt
