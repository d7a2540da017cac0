/// The command's memory. A library leaves that to its host.
#pragma once

#include <cstdint>

namespace mova::cli {

/// Sets the heap up for conversions, which build up text and captions by the megabyte. Call it once, first of all.
void prepareHeap();

/// Gives back what the heap has in store.
void emptyHeap();

/// From now on nothing is allocated in the gaps between blocks in use. For a forked process: it would copy them page by
/// page.
void leaveOutGaps();

/// For a process that forks: what its children allocate comes from huge pages that are theirs alone. `most` bytes of
/// address space at most are set aside for it. Returns how much the heap grew for the process itself.
uint64_t prepareHeapForChildren(uint64_t most);

}  // namespace mova::cli
