#include <lpconv/converter/huge_page_heap.h>

#include <sys/mman.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace lpconv {

namespace {

constexpr std::uintptr_t kHugePage = std::uintptr_t{1} << 21;
// Address space only: pages of it are touched as the heap grows into them.
constexpr int kHeapReserve = 512 << 20;
// The C library's own padding, for every growth after the reserve.
constexpr int kUsualTopPad = 128 << 10;
// Blocks up to this size stay in the heap instead of taking a mapping of small pages each.
constexpr int kMapThreshold = 32 << 20;

// Holds the heap below the first huge-page boundary, which only small pages can back, so that
// later blocks start above it. Never used, never touched beyond its header, never freed.
void* heapBelowFirstHugePage = nullptr;

}  // namespace

void useHugePagesForHeap() {
#if defined(__GLIBC__) && defined(M_TOP_PAD)
  ::mallopt(M_ARENA_MAX, 1);  // threads allocate from this heap too, not from arenas of their own
  ::mallopt(M_MMAP_THRESHOLD, kMapThreshold);
  ::mallopt(M_TRIM_THRESHOLD, 2 * kHeapReserve);  // the reserve is never given back
  ::mallopt(M_TOP_PAD, kHeapReserve);
  const auto before = reinterpret_cast<std::uintptr_t>(::sbrk(0));
  const std::uintptr_t first = (before + kHugePage - 1) & ~(kHugePage - 1);
  // Larger than what is left of the heap, so the break moves by the whole reserve. Under a
  // limit of address space the reserve may be refused: this block is then not had either, and
  // later blocks grow the heap as usual.
  heapBelowFirstHugePage = std::malloc(first - before + kHugePage);
  ::mallopt(M_TOP_PAD, kUsualTopPad);
  const std::uintptr_t last = reinterpret_cast<std::uintptr_t>(::sbrk(0)) & ~(kHugePage - 1);
  if (heapBelowFirstHugePage != nullptr && last > first) {
    // A refusal leaves small pages: slower, never different.
    (void)::madvise(reinterpret_cast<void*>(first), last - first, MADV_HUGEPAGE);
  }
#endif
}

}  // namespace lpconv
