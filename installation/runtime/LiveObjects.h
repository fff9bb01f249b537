// Which stand-ins are alive, by class.
#pragma once

namespace devinst {

void CountLive(const char* className, int change);

// Writes the closing line of this library to the trace: "live LIBRARY: 0", or the classes and
// numbers of the objects that were never released ("live LIBRARY: KernelProject 1, MetadataItem
// 2").
void TraceLiveObjects(const char* library);

} // namespace devinst
