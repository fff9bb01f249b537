// Automation strings and arrays that nobody has freed, counted through the platform's allocation
// spy.
#pragma once

namespace devinst {

// When ZT_ALLOCATIONS is set: counts from now on, for the whole process. The first library that
// asks is the one that counts.
void StartCountingAllocations();

// Writes the closing line to the trace where this library counts: "allocations: 0", or how many
// there are and the first of them ("allocations: 2 (24 bytes, 30 bytes)"), those that are still
// allocated.
void TraceAllocations();

} // namespace devinst
