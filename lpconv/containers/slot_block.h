#pragma once
// The storage of the arrays: one block with a small header and then the slots. A block has raw
// room for a number of slots but constructs them only as they come into use, so spare slots that
// are never reached cost neither a constructor call nor memory. Large blocks are backed by huge
// pages, since touching fresh memory a small page at a time dominates the cost of big reads.

#include <cstddef>
#include <limits>
#include <new>
#include <utility>

namespace lpconv::detail {

// Where a block's memory comes from: the general heap; a mapping of its own; or a shared
// huge-page chunk that packs many small blocks that are made together and mostly live together
// (the rows a matrix reader creates), which would otherwise touch fresh small pages one by one.
enum class BlockSource : unsigned char { heap, mapped, packed };

struct BlockHeader {
  // Slots 0 .. constructed - 1 hold objects.
  long constructed;
  // Slots the block has memory for.
  long room;
  // The whole allocation, header included, and where it came from.
  std::size_t bytes;
  BlockSource source;
};

inline constexpr std::size_t kBlockHeaderBytes = 32;
static_assert(sizeof(BlockHeader) <= kBlockHeaderBytes);

// At least bytes of raw memory, aligned for any slot type; granted tells how many there are and
// source where they came from (to be handed back to freeBlock). Requests of a megabyte or more
// are huge-page backed and recycled through a small cache of freed blocks; with pack, small
// requests share huge-page chunks. Throws std::bad_alloc.
void* allocateBlock(std::size_t bytes, bool pack, std::size_t& granted, BlockSource& source);
void freeBlock(void* block, std::size_t bytes, BlockSource source) noexcept;

template <typename T>
BlockHeader& headerOf(T* slots) {
  return *std::launder(
      reinterpret_cast<BlockHeader*>(reinterpret_cast<char*>(slots) - kBlockHeaderBytes));
}

// Value-initialises the slots from the first unconstructed one up to count - 1 (count <= room).
template <typename T>
void constructSlots(T* slots, long count) {
  BlockHeader& header = headerOf(slots);
  for (; header.constructed < count; ++header.constructed) ::new (slots + header.constructed) T();
}

// Destroys the constructed slots, last first, and frees the block. Null is ignored.
template <typename T>
void freeSlots(T* slots) noexcept {
  if (slots == nullptr) return;
  BlockHeader& header = headerOf(slots);
  for (long i = header.constructed - 1; i >= 0; --i) slots[i].~T();
  const std::size_t bytes = header.bytes;
  const BlockSource source = header.source;
  freeBlock(reinterpret_cast<char*>(slots) - kBlockHeaderBytes, bytes, source);
}

// A block with room for room slots of which the first construct are value-initialised (pack: see
// allocateBlock). A room whose byte count cannot be represented throws
// std::bad_array_new_length; memory that cannot be had throws std::bad_alloc.
template <typename T>
T* allocateSlots(long room, long construct, bool pack = false) {
  static_assert(alignof(T) <= kBlockHeaderBytes && kBlockHeaderBytes % alignof(T) == 0);
  constexpr std::size_t kMaxRoom =
      (std::numeric_limits<std::size_t>::max() - kBlockHeaderBytes) / sizeof(T);
  if (room < 0 || static_cast<std::size_t>(room) > kMaxRoom) throw std::bad_array_new_length();
  std::size_t granted = 0;
  BlockSource source = BlockSource::heap;
  void* block = allocateBlock(kBlockHeaderBytes + static_cast<std::size_t>(room) * sizeof(T), pack,
                              granted, source);
  ::new (block) BlockHeader{0, room, granted, source};
  T* slots = reinterpret_cast<T*>(static_cast<char*>(block) + kBlockHeaderBytes);
  try {
    constructSlots(slots, construct);
  } catch (...) {
    freeSlots(slots);
    throw;
  }
  return slots;
}

// Constructs raw slot `to` from `from` leaving everything about it as it was: containers take the
// storage and settings (their copy would lose the spare capacity), values move.
template <typename T>
void moveSlot(T* to, T& from) {
  if constexpr (requires(T & a) { a.takeStorage(a); }) {
    ::new (to) T();
    to->takeStorage(from);
  } else {
    ::new (to) T(std::move(from));
  }
}

// As moveSlot, but the slot ends as copying it would leave it: a container's capacity becomes
// its dimension.
template <typename T>
void copyLikeSlot(T* to, T& from) {
  moveSlot(to, from);
  if constexpr (requires(T & a) { a.dropSpareCapacity(); }) to->dropSpareCapacity();
}

// Moves the count constructed slots of `slots` (null: none) into a fresh block of room slots
// with moveSlot (asCopy: copyLikeSlot), frees the old block and returns the new one.
template <typename T>
T* moveSlots(T* slots, long count, long room, bool asCopy, bool pack = false) {
  T* fresh = allocateSlots<T>(room, 0, pack);
  BlockHeader& header = headerOf(fresh);
  try {
    for (; slots != nullptr && header.constructed < count; ++header.constructed) {
      T* to = fresh + header.constructed;
      if (asCopy) {
        copyLikeSlot(to, slots[header.constructed]);
      } else {
        moveSlot(to, slots[header.constructed]);
      }
    }
  } catch (...) {
    freeSlots(fresh);
    throw;
  }
  freeSlots(slots);
  return fresh;
}

}  // namespace lpconv::detail
