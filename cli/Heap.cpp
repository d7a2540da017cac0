#include "Heap.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

namespace mova::cli {

namespace {

constexpr uintptr_t kHugePage = 1 << 21;
/// Address space only: what is never used costs nothing. Captions by the hundred thousand fit in.
constexpr int kHugePart = 1 << 28;
constexpr int kGrowth = 1 << 24;
/// Clearing a huge page takes longer than the few ordinary ones that a small file needs.
constexpr uintptr_t kOrdinaryPart = 1 << 21;

uintptr_t heapEnd() {
  return reinterpret_cast<uintptr_t>(::sbrk(0));
}

uintptr_t nextHugePage(uintptr_t address) {
  return (address + kHugePage - 1) & ~(kHugePage - 1);
}

/// Each 4 KB page costs a fault when it is first used, and half the time of a large conversion would go there. So all
/// of the heap but its beginning is in huge pages.
void addHugePart() {
  const uintptr_t before = heapEnd();
  ::mallopt(M_TOP_PAD, kHugePart);
  void* volatile block = std::malloc(1 << 18);  // More than a heap has in store, so it grows. (Kept by "volatile".)
  std::free(block);
  const uintptr_t after = heapEnd();
  const uintptr_t begin = nextHugePage(before + kOrdinaryPart);
  // With too little address space, or with an allocator of another make, all stays as it was.
  if (begin < after) ::madvise(reinterpret_cast<void*>(begin), after - begin, MADV_HUGEPAGE);
}

}  // namespace

void prepareHeap() {
  // Memory that is kept is used again; memory that was given back costs faults again.
  ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
  ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
  addHugePart();
  ::mallopt(M_TOP_PAD, kGrowth);
}

}  // namespace mova::cli
