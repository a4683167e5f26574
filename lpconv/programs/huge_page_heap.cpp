#include <lpconv/programs/huge_page_heap.h>

#include <sys/mman.h>
#include <unistd.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <new>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

// Sanitizers bring allocators of their own, which the replacement below would bypass.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LPCONV_HEAP_POLICY 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || \
    __has_feature(memory_sanitizer)
#define LPCONV_HEAP_POLICY 0
#endif
#endif
#if !defined(LPCONV_HEAP_POLICY) && defined(__GLIBC__) && defined(M_TOP_PAD)
#define LPCONV_HEAP_POLICY 1
#endif
#if !defined(LPCONV_HEAP_POLICY)
#define LPCONV_HEAP_POLICY 0
#endif

namespace lpconv {

#if LPCONV_HEAP_POLICY
namespace {

constexpr std::uintptr_t kHugePage = std::uintptr_t{1} << 21;
// Address space only: pages of it are touched as the heap grows into them.
constexpr int kHeapReserve = 512 << 20;
// The padding of every growth after the reserve: large steps, so that each new stretch is
// advised before much of it is touched.
constexpr int kGrowthPad = 32 << 20;
// Blocks up to this size stay in the heap instead of taking a mapping of small pages each.
constexpr int kMapThreshold = 32 << 20;

// Holds the heap below the first huge-page boundary, which only small pages can back, so that
// later blocks start above it. Never used, never touched beyond its header, never freed.
void* heapBelowFirstHugePage = nullptr;

// The heap below this address has been advised; 0 while the policy is off.
std::atomic<std::uintptr_t> advisedHeapEnd{0};

void adviseHugePages(std::uintptr_t begin, std::uintptr_t end) {
  // A refusal leaves small pages: slower, never different.
  if (end > begin) (void)::madvise(reinterpret_cast<void*>(begin), end - begin, MADV_HUGEPAGE);
}

// After an allocation: advises the heap's growth since the last look, and the whole pages of a
// block large enough to have been mapped on its own. The break is read from the C library's
// cached value, without a system call.
void noteAllocation(void* block, std::size_t bytes) {
  std::uintptr_t advised = advisedHeapEnd.load(std::memory_order_relaxed);
  if (advised == 0) return;
  const std::uintptr_t top = reinterpret_cast<std::uintptr_t>(::sbrk(0)) & ~(kHugePage - 1);
  if (top > advised &&
      advisedHeapEnd.compare_exchange_strong(advised, top, std::memory_order_relaxed)) {
    adviseHugePages(advised, top);
  }
  if (bytes >= static_cast<std::size_t>(kMapThreshold)) {
    const auto begin = reinterpret_cast<std::uintptr_t>(block);
    adviseHugePages((begin + kHugePage - 1) & ~(kHugePage - 1), (begin + bytes) & ~(kHugePage - 1));
  }
}

}  // namespace
#endif

void useHugePagesForHeap() {
#if LPCONV_HEAP_POLICY
  ::mallopt(M_ARENA_MAX, 1);  // threads allocate from this heap too, not from arenas of their own
  ::mallopt(M_MMAP_THRESHOLD, kMapThreshold);
  ::mallopt(M_TRIM_THRESHOLD, 2 * kHeapReserve);  // the reserve is never given back
  ::mallopt(M_TOP_PAD, kHeapReserve);
  const auto before = reinterpret_cast<std::uintptr_t>(::sbrk(0));
  const std::uintptr_t first = (before + kHugePage - 1) & ~(kHugePage - 1);
  // Larger than what is left of the heap, so the break moves by the whole reserve. Under a
  // limit of address space the reserve may be refused: this block is then not had either, and
  // later blocks grow the heap in the usual steps.
  heapBelowFirstHugePage = std::malloc(first - before + kHugePage);
  ::mallopt(M_TOP_PAD, kGrowthPad);
  const std::uintptr_t last = reinterpret_cast<std::uintptr_t>(::sbrk(0)) & ~(kHugePage - 1);
  if (heapBelowFirstHugePage != nullptr && last > first) adviseHugePages(first, last);
  advisedHeapEnd.store(last > first ? last : first, std::memory_order_relaxed);
#endif
}

}  // namespace lpconv

#if LPCONV_HEAP_POLICY
// The program's own allocation functions: the C library's, followed by the look at the heap's
// growth. Deleting goes to free(), as the library's own functions do.
void* operator new(std::size_t bytes) {
  for (;;) {
    void* block = std::malloc(bytes == 0 ? 1 : bytes);
    if (block != nullptr) {
      lpconv::noteAllocation(block, bytes);
      return block;
    }
    const std::new_handler handler = std::get_new_handler();
    if (handler == nullptr) throw std::bad_alloc();
    handler();
  }
}
void* operator new[](std::size_t bytes) { return ::operator new(bytes); }
void operator delete(void* block) noexcept { std::free(block); }
void operator delete[](void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
void operator delete[](void* block, std::size_t) noexcept { std::free(block); }
#endif
