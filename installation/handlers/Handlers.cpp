// The classes of zt-handlers.dll, the library of sample handlers that lies in each specification.
#include "installation/handlers/KernelHolder.h"
#include "installation/handlers/SampleEdit.h"
#include "installation/handlers/SampleExport.h"
#include "installation/runtime/Library.h"

namespace devinst {

namespace {

constexpr CLSID SampleEditClass = {
    0x8b115251, 0x8907, 0x4cd0, {0x95, 0x19, 0x26, 0xbc, 0xe8, 0x68, 0x6a, 0x6e}};
constexpr CLSID SequenceNumbersClass = {
    0x393aed5c, 0x100f, 0x4151, {0x9e, 0xb4, 0x25, 0x50, 0x46, 0x97, 0x3f, 0xfb}};
constexpr CLSID NotificationsClass = {
    0x7125dc8b, 0xe7df, 0x4aba, {0x98, 0xc7, 0x27, 0xfb, 0x5d, 0x47, 0xb6, 0xbb}};
constexpr CLSID SampleExportClass = {
    0xe66e6add, 0x6d5f, 0x4744, {0xa5, 0xb6, 0x8d, 0x49, 0xa2, 0xa5, 0xd5, 0x82}};

const ComponentClass Classes[] = {
    {SampleEditClass, L"KVDev.SampleEdit", "SampleEdit",
     [] { return static_cast<StandIn*>(new SampleEdit); }},
    {SequenceNumbersClass, L"KVDev.SequenceNumbers", "SequenceNumbers",
     [] { return static_cast<StandIn*>(new KernelHolder("SequenceNumbers")); }},
    {NotificationsClass, L"KVDev.Notifications", "Notifications",
     [] { return static_cast<StandIn*>(new KernelHolder("Notifications")); }},
    {SampleExportClass, L"KVDev.Export", "SampleExport",
     [] { return static_cast<StandIn*>(new SampleExport); }},
};

} // namespace

std::span<const ComponentClass> LibraryClasses() {
    return Classes;
}

const char* const LibraryName = "zt-handlers.dll";

} // namespace devinst
