#include <lpconv/containers/slot_block.h>

#include <sys/mman.h>

#include <array>
#include <cstdint>
#include <mutex>

#if defined(__SANITIZE_ADDRESS__)
#define LPCONV_LEAK_CHECKED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LPCONV_LEAK_CHECKED 1
#endif
#endif
#ifdef LPCONV_LEAK_CHECKED
#include <sanitizer/lsan_interface.h>
#endif

namespace lpconv::detail {

namespace {

constexpr std::size_t kHugePage = std::size_t{2} << 20;
constexpr std::size_t kMappedFrom = std::size_t{1} << 20;
// Freed huge blocks kept for the next request of a similar size, so that a program reading
// window after window of large rows touches fresh memory only once. The cache has no destructor:
// arrays with static storage may free their blocks after it would have been destroyed.
constexpr std::size_t kCacheLimit = std::size_t{256} << 20;

struct CachedBlock {
  void* block = nullptr;
  std::size_t bytes = 0;
};

struct BlockCache {
  std::array<CachedBlock, 256> blocks{};
  std::size_t total = 0;

  // A kept block of at least bytes and at most twice as many.
  void* take(std::size_t bytes, std::size_t& granted) {
    for (CachedBlock& b : blocks) {
      if (b.block != nullptr && b.bytes >= bytes && b.bytes / 2 <= bytes) {
        granted = b.bytes;
        total -= b.bytes;
        return std::exchange(b.block, nullptr);
      }
    }
    return nullptr;
  }

  bool keep(void* block, std::size_t bytes) {
    if (total + bytes > kCacheLimit) return false;
    for (CachedBlock& b : blocks) {
      if (b.block == nullptr) {
        b = {block, bytes};
        total += bytes;
        return true;
      }
    }
    return false;
  }
};

// The cache and the packed chunks are shared by every thread of the program: arrays in different
// threads must stay as independent as their memory from the general heap would be.
std::mutex& blockMutex() {
  static std::mutex* instance = new std::mutex;  // never destroyed, like the cache
  return *instance;
}

BlockCache& cache() {
  static BlockCache instance;
  return instance;
}

// A fresh mapping of bytes (a multiple of the huge page) starting on a huge-page boundary.
void* mapHugeBlock(std::size_t bytes) {
  const std::size_t span = bytes + kHugePage;
  void* raw = mmap(nullptr, span, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (raw == MAP_FAILED) throw std::bad_alloc();
  const auto start = reinterpret_cast<std::uintptr_t>(raw);
  const std::uintptr_t aligned = (start + kHugePage - 1) & ~(kHugePage - 1);
  if (aligned > start) munmap(raw, aligned - start);
  const std::size_t tail = span - (aligned - start) - bytes;
  if (tail > 0) munmap(reinterpret_cast<void*>(aligned + bytes), tail);
  void* block = reinterpret_cast<void*>(aligned);
  // Only a hint: without huge pages the block works all the same.
  madvise(block, bytes, MADV_HUGEPAGE);
#ifdef LPCONV_LEAK_CHECKED
  // The leak checker looks for pointers in the heap only; the elements here hold the only
  // pointers to their numbers' limbs.
  __lsan_register_root_region(block, bytes);
#endif
  return block;
}

void unmapHugeBlock(void* block, std::size_t bytes) noexcept {
#ifdef LPCONV_LEAK_CHECKED
  __lsan_unregister_root_region(block, bytes);
#endif
  munmap(block, bytes);
}

void* allocateMapped(std::size_t bytes, std::size_t& granted) {
  if (bytes > std::numeric_limits<std::size_t>::max() - 2 * kHugePage) throw std::bad_alloc();
  const std::size_t rounded = (bytes + kHugePage - 1) & ~(kHugePage - 1);
  if (void* block = cache().take(rounded, granted)) return block;
  granted = rounded;
  return mapHugeBlock(rounded);
}

void freeMapped(void* block, std::size_t bytes) noexcept {
  if (!cache().keep(block, bytes)) unmapHugeBlock(block, bytes);
}

// A huge page shared by packed blocks, found from any of them by masking their address. It goes
// back to the cache when its last block is freed; the chunk being filled is reused instead.
struct Chunk {
  std::size_t live;
  std::size_t used;
  std::size_t bytes;
};
constexpr std::size_t kChunkHeaderBytes = 32;
static_assert(sizeof(Chunk) <= kChunkHeaderBytes);
constexpr std::size_t kPackedUpTo = std::size_t{64} << 10;

Chunk* currentChunk = nullptr;

void* allocatePacked(std::size_t bytes) {
  bytes = (bytes + kChunkHeaderBytes - 1) & ~(kChunkHeaderBytes - 1);
  if (currentChunk == nullptr || currentChunk->used + bytes > kHugePage) {
    if (currentChunk != nullptr && currentChunk->live == 0) {
      currentChunk->used = kChunkHeaderBytes;
    } else {
      std::size_t granted = 0;
      void* memory = allocateMapped(kHugePage, granted);
      currentChunk = ::new (memory) Chunk{0, kChunkHeaderBytes, granted};
    }
  }
  void* block = reinterpret_cast<char*>(currentChunk) + currentChunk->used;
  currentChunk->used += bytes;
  ++currentChunk->live;
  return block;
}

void freePacked(void* block) noexcept {
  auto* chunk =
      reinterpret_cast<Chunk*>(reinterpret_cast<std::uintptr_t>(block) & ~(kHugePage - 1));
  if (--chunk->live > 0) return;
  if (chunk == currentChunk) {
    chunk->used = kChunkHeaderBytes;
  } else {
    freeMapped(chunk, chunk->bytes);
  }
}

}  // namespace

void* allocateBlock(std::size_t bytes, bool pack, std::size_t& granted, BlockSource& source) {
  if (pack && bytes <= kPackedUpTo) {
    source = BlockSource::packed;
    granted = bytes;
    const std::lock_guard<std::mutex> lock(blockMutex());
    return allocatePacked(bytes);
  }
  if (bytes < kMappedFrom) {
    source = BlockSource::heap;
    granted = bytes;
    return ::operator new(bytes);
  }
  source = BlockSource::mapped;
  const std::lock_guard<std::mutex> lock(blockMutex());
  return allocateMapped(bytes, granted);
}

void freeBlock(void* block, std::size_t bytes, BlockSource source) noexcept {
  switch (source) {
    case BlockSource::heap:
      ::operator delete(block);
      break;
    case BlockSource::mapped: {
      const std::lock_guard<std::mutex> lock(blockMutex());
      freeMapped(block, bytes);
      break;
    }
    case BlockSource::packed: {
      const std::lock_guard<std::mutex> lock(blockMutex());
      freePacked(block);
      break;
    }
  }
}

}  // namespace lpconv::detail
