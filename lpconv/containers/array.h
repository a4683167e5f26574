#pragma once
// One-based growable arrays with owned storage and checked access.
//
// Storage has at least capacity + 1 slots; element i lives in slot i and slot 0 exists but holds no
// element (it is carried along on growth all the same). Growth leaves every slot as copying it
// would, but moves it (rows keep a copy's capacity, see takeAsCopy). Misuse ends the process
// through reportFailure.

#include <cstddef>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>
#include <vector>

#include <lpconv/containers/messages.h>
#include <lpconv/util/failure.h>

namespace lpconv {

static_assert(sizeof(long) == 8, "dimensions and capacities are signed 64-bit");

namespace detail {

// count value-initialised slots from one array-new. A count whose byte size (with the array
// cookie of class elements) cannot be represented throws std::bad_array_new_length for every
// element type: GCC checks that only for scalars and hands class arrays to operator new as is.
template <typename T>
T* newSlots(long count) {
  constexpr std::size_t kMaxBytes = std::numeric_limits<std::size_t>::max() - sizeof(std::size_t);
  if (count < 0 || static_cast<std::size_t>(count) > kMaxBytes / sizeof(T)) {
    throw std::bad_array_new_length();
  }
  return new T[static_cast<std::size_t>(count)]();
}

// Moves a slot into fresh storage so that it looks exactly as a copy would: containers provide
// takeAsCopy (the copy's capacity and settings without copying the elements), values move.
template <typename T>
void relocateSlot(T& to, T& from) {
  if constexpr (requires { to.takeAsCopy(from); }) {
    to.takeAsCopy(from);
  } else {
    to = std::move(from);
  }
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
    delete[] elements;
    elements = nullptr;
    dimension = 0;
    capacity = 0;
  }

  virtual ~Array() { delete[] elements; }

  // Sets the dimension to n. Storage is never shrunk: within the capacity only the dimension
  // changes and slots keep their values. Beyond it, new storage of n (or n + 100 with
  // reserveExtra) + 1 slots is allocated and slots 0..old dimension are copied into it.
  // New slots of fresh storage are value-initialised; reused slots keep their old contents.
  // Reports "array: dimension < 0" for negative n; a size whose byte count cannot be represented
  // throws std::bad_array_new_length.
  virtual void resize(long n, bool reserveExtra) {
    if (n < 0) reportFailure(messages::kArrayDimensionNegative);
    if (n <= dimension || n <= capacity) {
      dimension = n;
      return;
    }
    // Keeps n + 100 + 1 from overflowing; larger byte counts fail in newSlots.
    if (n > kMaxElements - kReserve - 1) throw std::bad_array_new_length();
    moveToFreshStorage(reserveExtra ? n + kReserve : n);
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

 protected:
  // Collects the elements a reader appends, leaving dimension, capacity and every slot as the
  // literal one-element-at-a-time growth would, in time linear in the element count. Slots within
  // the capacity are used in place (they keep their old values until written); beyond it the
  // elements go to a spill area, value-initialised like fresh storage, and finish() moves
  // everything into one allocation of the capacity the caller computes from the literal growth.
  // Until finish() the array holds only the in-place part, so an exception thrown by a failure
  // handler leaves it valid (the spill is simply dropped).
  class Appender {
   public:
    explicit Appender(Array& array) : array(array) {}

    // The slot of the next element.
    T& next() {
      if (spill.empty() && array.dimension < array.capacity)
        return array.elements[++array.dimension];
      return spill.emplace_back();
    }
    long count() const { return array.dimension + static_cast<long>(spill.size()); }
    // The capacity the in-place part ends at; the spill starts beyond it.
    long inPlaceCapacity() const { return array.capacity; }
    // Moves the spill into fresh storage of newCapacity + 1 slots (newCapacity >= count()).
    void finish(long newCapacity) {
      if (spill.empty()) return;
      array.moveToFreshStorage(newCapacity);
      for (T& element : spill) detail::relocateSlot(array.elements[++array.dimension], element);
      spill.clear();
    }

   private:
    Array& array;
    std::vector<T> spill;
  };

  // Replaces the storage by newCapacity + 1 fresh slots, relocating slots 0..dimension into them.
  void moveToFreshStorage(long newCapacity) {
    T* fresh = detail::newSlots<T>(newCapacity + 1);
    if (elements != nullptr) {
      for (long i = 0; i <= dimension; ++i) detail::relocateSlot(fresh[i], elements[i]);
    }
    delete[] elements;
    elements = fresh;
    capacity = newCapacity;
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
    elements = detail::newSlots<T>(1);
    capacity = 0;
  }
  static const T& emptySlot() {
    static const T value{};
    return value;
  }

  void assign(const Array& other) {
    if (this == &other) return;
    if (other.dimension > capacity || (elements == nullptr && other.elements != nullptr)) {
      T* fresh = detail::newSlots<T>(other.dimension + 1);
      delete[] elements;
      elements = fresh;
      capacity = other.dimension;
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
