/// The command's memory. A library leaves that to its host.
#pragma once

namespace mova::cli {

/// Sets the heap up for conversions, which build up text and captions by the megabyte. Call it once, first of all.
void prepareHeap();

}  // namespace mova::cli
