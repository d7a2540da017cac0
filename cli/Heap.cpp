#include "Heap.h"

#include <malloc.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

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

void useHugePages(uintptr_t begin, uintptr_t end) {
  begin = nextHugePage(begin);
  // NOLINTNEXTLINE(performance-no-int-to-ptr): a page has no pointer of its own
  if (begin < end) ::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

/// Each 4 KB page costs a fault when it is first used, and half the time of a large conversion would go there. So all
/// of the heap but its beginning is in huge pages.
void addHugePart() {
  const uintptr_t before = heapEnd();
  ::mallopt(M_TOP_PAD, kHugePart);
  void* volatile block = std::malloc(1 << 18);  // More than a heap has in store, so it grows. (Kept by "volatile".)
  std::free(block);
  // With too little address space, or with an allocator of another make, all stays as it was.
  useHugePages(before + kOrdinaryPart, heapEnd());
}

/// A block that large is a whole text, and may be beyond the huge part.
constexpr size_t kLargeBlock = 1 << 26;

/// What the parent allocates while its children run comes from a part of at least that size, so that it leaves theirs
/// alone.
constexpr size_t kParentsPart = 1 << 21;

/// Takes a block that is never freed and never written to.
void leaveOut(size_t size) {
  [[maybe_unused]] void* volatile block = std::malloc(size);
}  // NOLINT(clang-analyzer-unix.Malloc): it is to be lost

/// Bytes that lie free between blocks in use. They would be used first, page by page.
size_t gaps() {
  const struct mallinfo2 info = ::mallinfo2();
  return info.fordblks - info.keepcost;
}

}  // namespace

void emptyHeap() {
  ::malloc_trim(0);
}

void leaveOutGaps() {
  for (size_t size = 1 << 20; size >= 1 << 10; size /= 2) {
    while (gaps() >= size) {
      const size_t before = gaps();
      void* volatile block = std::malloc(size);
      if (gaps() < before) continue;
      std::free(block);  // There are smaller gaps only: it is from the end of the heap.
      break;
    }
  }
}

uint64_t prepareHeapForChildren(uint64_t most) {
  if (::mallinfo2().arena == 0) return 0;  // an allocator of another make, which the rest would mean nothing to
  constexpr uintptr_t page = 4096;
  const uintptr_t before = heapEnd();
  leaveOutGaps();
  ::mallopt(M_TOP_PAD, 0);
  // The parent's part goes up to one page before a huge one, and what is free behind it begins in that page: its head
  // is the last that the parent writes to.
  const uintptr_t boundary = nextHugePage(heapEnd() + kParentsPart + page);
  void* volatile parentsPart = std::malloc(boundary - page - heapEnd() + ::mallinfo2().keepcost - page / 2);
  ::mallopt(M_TOP_PAD, static_cast<int>(std::min<uint64_t>(most, kHugePart)));
  leaveOut(::mallinfo2().keepcost);
  useHugePages(boundary, heapEnd());
  ::mallopt(M_TOP_PAD, kGrowth);
  std::free(parentsPart);
  return boundary - before;
}

void prepareHeap() {
  // Memory that is kept is used again; memory that was given back costs faults again.
  ::mallopt(M_MMAP_THRESHOLD, 1 << 30);
  ::mallopt(M_TRIM_THRESHOLD, 1 << 30);
  addHugePart();
  ::mallopt(M_TOP_PAD, kGrowth);
}

}  // namespace mova::cli

void* operator new(size_t size) {
  for (;;) {
    if (void* block = std::malloc(std::max<size_t>(size, 1))) {
      const auto begin = reinterpret_cast<uintptr_t>(block);
      if (size >= mova::cli::kLargeBlock) mova::cli::useHugePages(begin, begin + size);
      return block;
    }
    const std::new_handler handler = std::get_new_handler();
    if (!handler) throw std::bad_alloc();
    handler();
  }
}

// With the address sanitizer this one would not go through the other by itself.
void* operator new(size_t size, const std::nothrow_t&) noexcept {
  try {
    return operator new(size);
  } catch (const std::bad_alloc&) {
    return nullptr;
  }
}

void operator delete(void* block) noexcept {
  std::free(block);
}

void operator delete(void* block, size_t) noexcept {
  std::free(block);
}
