// Identifiers of the installation's components. Their values come with the installation: the build
// setting ZT_COMPONENT_IDS names the header that holds them.
#pragma once

#include <windows.h>

extern "C" {
extern const GUID CLSID_KernelAdmin;
extern const GUID IID_KernelAdmin;
extern const GUID IID_ExportHandler;
extern const GUID IID_ScriptExporter;
extern const GUID CLSID_Exporter;
extern const GUID IID_Exporter;
extern const GUID IID_IOKStatusDisplay;
extern const GUID IID_3DComponent;
extern const GUID IID_3DCommandTarget;
extern const GUID IID_ProjectNode;
extern const GUID CLSID_Archive;
extern const GUID IID_Archive;
}
