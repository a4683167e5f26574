#pragma once
// One-based growable arrays with owned storage and checked access.
//
// Storage stands for capacity + 1 slots; element i lives in slot i and slot 0 exists but holds no
// element (it is carried along on growth all the same). Slots beyond the dimension that were
// never reached are made when first reached, with the value fresh storage would have given them
// (see slot_block.h). Growth leaves every slot as copying it would, but moves it (rows keep a
// copy's capacity, see takeAsCopy). Misuse ends the process through reportFailure.

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

#include <lpconv/containers/messages.h>
#include <lpconv/containers/slot_block.h>
#include <lpconv/util/failure.h>

namespace lpconv {

static_assert(sizeof(long) == 8, "dimensions and capacities are signed 64-bit");

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
    moveToFreshStorage(newCapacity, newCapacity + 1, n + 1);
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
    if (elements != nullptr || n <= capacity || n > kMaxElements - kReserve - 1) {
      resize(n, true);
      return;
    }
    moveToFreshStorage(n + kReserve, n + 1, n + 1, true);
    dimension = n;
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
        array.elements = detail::moveSlots(array.elements, array.dimension + 1,
                                           std::max(2 * slot, kFirstSpillRoom), true);
        detail::constructSlots(array.elements, 1);
      } else if (detail::headerOf(array.elements).room <= slot) {
        array.elements = detail::moveSlots(array.elements, slot, 2 * slot, false);
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
    Array& array;
    const long inPlace;
    bool spilled = false;
  };

  // Replaces the storage by a fresh block standing for newCapacity + 1 slots with memory for
  // room of them, moving slots 0..dimension into it as a copy leaves them and value-initialising
  // the slots up to construct - 1. pack: see detail::allocateBlock.
  void moveToFreshStorage(long newCapacity, long room, long construct, bool pack = false) {
    T* fresh =
        detail::moveSlots(elements, elements == nullptr ? 0 : dimension + 1, room, true, pack);
    elements = fresh;
    capacity = newCapacity;
    detail::constructSlots(elements, construct);
  }

  // Makes sure slots 0..count - 1 exist; slots never reached before get their fresh value. A block
  // held to fewer slots grows to the capacity's full storage. Needs storage.
  void makeSlots(long count) {
    detail::BlockHeader& header = detail::headerOf(elements);
    if (header.constructed >= count) return;
    if (header.room < count) {
      elements =
          detail::moveSlots(elements, header.constructed, std::max(count, capacity + 1), false);
    }
    detail::constructSlots(elements, count);
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
