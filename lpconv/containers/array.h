#pragma once
// One-based growable arrays with owned storage and checked access.
//
// Storage stands for capacity + 1 slots; element i lives in slot i and slot 0 exists but holds no
// element (it is carried along on growth all the same). Growth on any element type copies as the
// written algorithm does: every slot of the new storage default-constructed, slots 0..old
// dimension copy-assigned in ascending order, then the old storage destroyed last slot first.
// Only the library's own element types (numbers, strings, the containers themselves), where no
// observer can tell the difference, take a shortcut: growth moves the slots, and slots beyond the
// dimension that were never reached are made when first reached, with the value fresh storage
// would have given them. Storage is plain heap memory, freed when the array is done with it.
// Misuse ends the process through reportFailure.

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

#include <lpconv/containers/messages.h>
#include <lpconv/util/failure.h>

namespace lpconv {

static_assert(sizeof(long) == 8, "dimensions and capacities are signed 64-bit");

class QQ;
class BigInt;

namespace detail {

// Element types whose construction, copying and destruction no caller can observe: the growth of
// an array of them may move slots and make spare slots on first use. Containers count as their
// own (they are recognised by takeStorage, which moves a whole container without touching its
// elements).
template <typename T>
inline constexpr bool isOwnElement = std::is_arithmetic_v<T> || std::is_same_v<T, std::string> ||
                                     std::is_same_v<T, QQ> || std::is_same_v<T, BigInt> ||
                                     requires(T& a) {
  a.takeStorage(a);
};

// The storage of an array: a small header, then the slots, in one plain heap block. A block has
// room for a number of slots; slots of the library's own types are constructed as they come into
// use, every other type's slots all at once.
struct BlockHeader {
  // Slots 0 .. constructed - 1 hold objects.
  long constructed;
  // Slots the block has memory for.
  long room;
};

// Where the slots start in the block, and the block's alignment: the header and then the slots,
// each aligned as it needs.
template <typename T>
inline constexpr std::size_t kSlotOffset = (std::max(sizeof(BlockHeader), alignof(T)) +
                                            (alignof(T) - 1)) &
                                           ~(alignof(T) - 1);
template <typename T>
inline constexpr std::align_val_t kBlockAlignment{std::max(alignof(BlockHeader), alignof(T))};

template <typename T>
BlockHeader& headerOf(T* slots) {
  return *std::launder(
      reinterpret_cast<BlockHeader*>(reinterpret_cast<char*>(slots) - kSlotOffset<T>));
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
  header.~BlockHeader();
  ::operator delete(reinterpret_cast<char*>(slots) - kSlotOffset<T>, kBlockAlignment<T>);
}

// A block with room for room slots of which the first construct are value-initialised (every
// slot for a type that is not the library's own). A room whose byte count cannot be represented
// throws std::bad_array_new_length; memory that cannot be had throws std::bad_alloc.
template <typename T>
T* allocateSlots(long room, long construct) {
  constexpr std::size_t kMaxRoom =
      (std::numeric_limits<std::size_t>::max() - kSlotOffset<T>) / sizeof(T);
  if (room < 0 || static_cast<std::size_t>(room) > kMaxRoom) throw std::bad_array_new_length();
  void* block = ::operator new(kSlotOffset<T> + static_cast<std::size_t>(room) * sizeof(T),
                               kBlockAlignment<T>);
  ::new (block) BlockHeader{0, room};
  T* slots = reinterpret_cast<T*>(static_cast<char*>(block) + kSlotOffset<T>);
  try {
    constructSlots(slots, isOwnElement<T> ? construct : room);
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

// Moves the count constructed slots of `slots` (null: none) into a fresh block of room slots,
// frees the old block and returns the new one. asCopy: the slots end as copying them would leave
// them (a container's capacity becomes its dimension). For the library's own element types.
template <typename T>
T* moveSlots(T* slots, long count, long room, bool asCopy) {
  static_assert(isOwnElement<T>, "other element types grow by copying");
  T* fresh = allocateSlots<T>(room, 0);
  BlockHeader& header = headerOf(fresh);
  try {
    for (; slots != nullptr && header.constructed < count; ++header.constructed) {
      T* to = fresh + header.constructed;
      moveSlot(to, slots[header.constructed]);
      if constexpr (requires(T & a) { a.dropSpareCapacity(); }) {
        if (asCopy) to->dropSpareCapacity();
      }
    }
  } catch (...) {
    freeSlots(fresh);
    throw;
  }
  freeSlots(slots);
  return fresh;
}

// The written growth for any other element type: a fresh block of room slots, all
// default-constructed; slots 0..count - 1 copy-assigned into it in ascending order; the old block
// destroyed last slot first and freed.
template <typename T>
T* copySlots(T* slots, long count, long room) {
  T* fresh = allocateSlots<T>(room, room);
  try {
    for (long i = 0; slots != nullptr && i < count; ++i) fresh[i] = slots[i];
  } catch (...) {
    freeSlots(fresh);
    throw;
  }
  freeSlots(slots);
  return fresh;
}

}  // namespace detail

template <typename T>
class Array {
 public:
  // Spare slots added when a growing resize asks for reserve.
  static constexpr long kReserve = 100;
  static constexpr long kMaxElements = std::numeric_limits<long>::max();

  Array() = default;
  // Value semantics: slots 0..dimension are copied; the copy's capacity is other's dimension.
  Array(const Array& other) { assign(other); }
  Array& operator=(const Array& other) {
    assign(other);
    return *this;
  }

  // Dimension 0; storage is kept.
  virtual void clear() { resize(0, false); }

  // Frees the storage (elements destroyed last slot first) and resets to the empty state.
  virtual void release() {
    detail::freeSlots(elements);
    elements = nullptr;
    dimension = 0;
    capacity = 0;
  }

  virtual ~Array() { detail::freeSlots(elements); }

  // Sets the dimension to n. Storage is never shrunk: within the capacity only the dimension
  // changes and slots keep their values. Beyond it, new storage of n (or n + 100 with
  // reserveExtra) + 1 slots is allocated and slots 0..old dimension are copied into it.
  // New slots of fresh storage are value-initialised; reused slots keep their old contents.
  // Reports "array: dimension < 0" for negative n; a size whose byte count cannot be represented
  // throws std::bad_array_new_length.
  virtual void resize(long n, bool reserveExtra) {
    if (n < 0) reportFailure(messages::kArrayDimensionNegative);
    if (n <= dimension || n <= capacity) {
      if (elements != nullptr) makeSlots(n + 1);
      dimension = n;
      return;
    }
    // Keeps n + 100 + 1 from overflowing; larger byte counts fail in allocateSlots.
    if (n > kMaxElements - kReserve - 1) throw std::bad_array_new_length();
    const long newCapacity = reserveExtra ? n + kReserve : n;
    if constexpr (detail::isOwnElement<T>) {
      moveToFreshStorage(newCapacity, newCapacity + 1, n + 1);
    } else {
      elements =
          detail::copySlots(elements, elements == nullptr ? 0 : dimension + 1, newCapacity + 1);
      capacity = newCapacity;
    }
    dimension = n;
  }

  // True when dimension > 0, whatever storage is held.
  virtual bool isNonEmpty() const { return dimension > 0; }

  // Checked access to slot i for 0 <= i <= dimension; slot 0 passes the check although it holds
  // no element. Reports "Array: index out of range" otherwise. On an array that never had
  // storage, at(0) allocates slot 0 (the const form returns a shared default value) so that the
  // reference is always to a real object.
  T& at(long i) {
    checkIndex(i);
    if (elements == nullptr) allocateSlotZero();
    return elements[i];
  }
  const T& at(long i) const {
    checkIndex(i);
    if (elements == nullptr) return emptySlot();
    return elements[i];
  }

  // Unchecked access to element i (1..dimension) for the readers and writers.
  T& operator[](long i) { return elements[i]; }
  const T& operator[](long i) const { return elements[i]; }

  long getDimension() const { return dimension; }
  long getCapacity() const { return capacity; }
  // The storage (slot 0 first), or null when nothing was ever allocated.
  const T* data() const { return elements; }

  // Takes other's storage and fields as they are; other is left empty without storage. *this
  // must have no storage.
  void takeStorage(Array& other) noexcept {
    elements = std::exchange(other.elements, nullptr);
    dimension = std::exchange(other.dimension, 0);
    capacity = std::exchange(other.capacity, 0);
  }

  // Makes the capacity the dimension, as copying the array would: the spare slots stay allocated
  // but can no longer be reached, since every resize beyond the capacity allocates afresh.
  void dropSpareCapacity() noexcept { capacity = dimension; }

  // Takes other's storage, leaving *this exactly as a copy assignment from other into an array
  // without storage would (the same slots 0..dimension, capacity equal to other's dimension),
  // without copying a single element. other is left empty without storage. *this must have no
  // storage.
  void takeAsCopy(Array& other) noexcept {
    takeStorage(other);
    dropSpareCapacity();
  }

  // resize(n, true) for an array without storage, whose memory is held to the n + 1 slots in use:
  // the spare slots are only made (with their fresh values) if a later resize reaches them. For
  // readers that create many rows that keep their length.
  void resizeFreshKeepingSpareAway(long n) {
    if constexpr (detail::isOwnElement<T>) {
      if (elements == nullptr && n > capacity && n <= kMaxElements - kReserve - 1) {
        moveToFreshStorage(n + kReserve, n + 1, n + 1);
        dimension = n;
        return;
      }
    }
    resize(n, true);
  }

 protected:
  // Collects the elements a reader appends, leaving dimension, capacity and every slot as the
  // literal one-element-at-a-time growth would, in time linear in the element count, each element
  // made once in the storage it ends in. Slots within the capacity are used in place (they keep
  // their old values until written); the first element beyond it moves slots 0..dimension into a
  // block that then grows geometrically (as the literal growth copies them, so rows keep a copy's
  // capacity), and finish() sets the capacity the caller computes from the literal growth. Until
  // then the capacity is the dimension, so an exception thrown by a failure handler leaves a
  // valid array.
  class Appender {
   public:
    explicit Appender(Array& array) : array(array), inPlace(array.capacity) {}

    // The slot of the next element.
    T& next() {
      if (array.dimension < inPlace) {
        array.makeSlots(array.dimension + 2);
        return array.elements[++array.dimension];
      }
      const long slot = array.dimension + 1;
      if (!spilled) {
        spilled = true;
        array.elements = grow(array.dimension + 1, std::max(2 * slot, kFirstSpillRoom), true);
        detail::constructSlots(array.elements, 1);
      } else if (detail::headerOf(array.elements).room <= slot) {
        array.elements = grow(slot, 2 * slot, false);
      }
      detail::constructSlots(array.elements, slot + 1);
      array.dimension = slot;
      array.capacity = slot;
      return array.elements[slot];
    }
    long count() const { return array.dimension; }
    // The capacity the in-place part ends at; elements beyond it went to fresh storage.
    long inPlaceCapacity() const { return inPlace; }
    // Gives the array its final capacity (newCapacity >= count()), when elements went beyond the
    // in-place part.
    void finish(long newCapacity) {
      if (spilled) array.capacity = newCapacity;
    }

   private:
    static constexpr long kFirstSpillRoom = 16;
    // The slots moved (the library's own types) or copied into a block of room slots.
    T* grow(long count, long room, bool asCopy) {
      if constexpr (detail::isOwnElement<T>) {
        return detail::moveSlots(array.elements, count, room, asCopy);
      } else {
        return detail::copySlots(array.elements, count, room);
      }
    }
    Array& array;
    const long inPlace;
    bool spilled = false;
  };

  // Replaces the storage by a fresh block standing for newCapacity + 1 slots with memory for
  // room of them, moving slots 0..dimension into it as a copy leaves them and value-initialising
  // the slots up to construct - 1. For the library's own element types.
  void moveToFreshStorage(long newCapacity, long room, long construct) {
    T* fresh = detail::moveSlots(elements, elements == nullptr ? 0 : dimension + 1, room, true);
    elements = fresh;
    capacity = newCapacity;
    detail::constructSlots(elements, construct);
  }

  // Makes sure slots 0..count - 1 exist; slots never reached before get their fresh value. A block
  // held to fewer slots grows to the capacity's full storage. Needs storage.
  void makeSlots(long count) {
    detail::BlockHeader& header = detail::headerOf(elements);
    if (header.constructed >= count) return;
    // Only the library's own types have slots still to make.
    if constexpr (detail::isOwnElement<T>) {
      if (header.room < count) {
        elements =
            detail::moveSlots(elements, header.constructed, std::max(count, capacity + 1), false);
      }
      detail::constructSlots(elements, count);
    }
  }

  long dimension = 0;
  T* elements = nullptr;
  long capacity = 0;
  // Two flags no operation reads; kept cleared for the object layout.
  bool spareFlag1 = false;
  bool spareFlag2 = false;

 private:
  void checkIndex(long i) const {
    if (i < 0 || i > dimension) reportFailure(messages::kArrayIndexOutOfRange);
  }

  // Slot 0 of an array without storage: at(0) must hand out a real object.
  void allocateSlotZero() {
    elements = detail::allocateSlots<T>(1, 1);
    capacity = 0;
  }
  static const T& emptySlot() {
    static const T value{};
    return value;
  }

  void assign(const Array& other) {
    if (this == &other) return;
    if (other.dimension > capacity || (elements == nullptr && other.elements != nullptr)) {
      T* fresh = detail::allocateSlots<T>(other.dimension + 1, other.dimension + 1);
      detail::freeSlots(elements);
      elements = fresh;
      capacity = other.dimension;
    } else if (elements != nullptr) {
      makeSlots(other.dimension + 1);
    }
    dimension = other.dimension;
    if (other.elements != nullptr) {
      for (long i = 0; i <= dimension; ++i) elements[i] = other.elements[i];
    }
  }
};

// The array every serialisable container derives from. For integral elements a growing resize
// sets the new elements to 0, also when the storage is reused (a plain Array leaves them be).
template <typename T>
class ConversionArray : public Array<T> {
 public:
  ConversionArray() = default;
  ConversionArray(const ConversionArray&) = default;
  ConversionArray& operator=(const ConversionArray&) = default;
  ~ConversionArray() override = default;

  void resize(long n, bool reserveExtra) override {
    const long old = this->dimension;
    Array<T>::resize(n, reserveExtra);
    if constexpr (std::is_integral_v<T>) {
      for (long i = old + 1; i <= n; ++i) this->elements[i] = 0;
    }
  }
};

}  // namespace lpconv
