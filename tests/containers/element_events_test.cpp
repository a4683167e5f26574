// Growth on an element type of the user's own follows the written algorithm event for event, and
// the storage honours any alignment.

#include <cstdint>
#include <stdexcept>
#include <string>

#include <lpconv/containers/array.h>

#include "test_support.h"

namespace lpconv {
namespace {

// Records "c" for a default construction, "=v" for a copy assignment of value v and "dv" for the
// destruction of value v; a copy construction or a move would show as "C" or "M".
struct Recorded {
  static std::string log;
  static int throwOnAssignOf;
  int value = 0;

  Recorded() { log += "c"; }
  Recorded(const Recorded& other) : value(other.value) { log += "C"; }
  Recorded(Recorded&& other) noexcept : value(other.value) { log += "M"; }
  Recorded& operator=(const Recorded& other) {
    if (other.value == throwOnAssignOf) throw std::runtime_error("assignment refused");
    value = other.value;
    log += "=" + std::to_string(value);
    return *this;
  }
  Recorded& operator=(Recorded&& other) noexcept {
    value = other.value;
    log += "M";
    return *this;
  }
  ~Recorded() { log += "d" + std::to_string(value); }
};
std::string Recorded::log;
int Recorded::throwOnAssignOf = -1;

// An array of dimension and capacity 2 holding 7, 1, 2 in slots 0..2, with the log cleared.
void fillSevenOneTwo(Array<Recorded>& a) {
  a.resize(2, false);
  a[0].value = 7;
  a[1].value = 1;
  a[2].value = 2;
  Recorded::log.clear();
}

TEST(ElementEvents, GrowthConstructsEverySlotCopiesInOrderThenDestroysTheOld) {
  struct Case {
    long n;
    bool reserveExtra;
    std::string events;
  };
  const std::string reserved(106, 'c');
  for (const Case& c :
       {Case{4, false, "ccccc=7=1=2d2d1d7"}, Case{5, true, reserved + "=7=1=2d2d1d7"},
        Case{2, true, ""},  // within the capacity: nothing happens
        Case{0, false, ""}}) {
    Array<Recorded> a;
    fillSevenOneTwo(a);
    a.resize(c.n, c.reserveExtra);
    EXPECT_EQ(Recorded::log, c.events) << c.n;
    EXPECT_EQ(a.getCapacity(), c.reserveExtra && c.n > 2 ? c.n + 100 : std::max(c.n, 2L));
    Recorded::log.clear();
  }
  EXPECT_EQ(Recorded::log, "d2d1d7");  // the last array, destroyed last slot first

  Array<Recorded> a;
  fillSevenOneTwo(a);
  a.resize(1, false);
  a.resize(3, false);  // copies slots 0..1 only; slot 2 of the old storage is destroyed as 2
  EXPECT_EQ(Recorded::log, "cccc=7=1d2d1d7");
  Recorded::log.clear();
  a.release();
  EXPECT_EQ(Recorded::log, "d0d0d1d7");
}

TEST(ElementEvents, AFailingCopyLeavesTheArrayAsItWas) {
  Array<Recorded> a;
  fillSevenOneTwo(a);
  const Recorded* storage = a.data();
  Recorded::throwOnAssignOf = 1;
  EXPECT_THROW(a.resize(3, false), std::runtime_error);
  Recorded::throwOnAssignOf = -1;
  EXPECT_EQ(Recorded::log, "cccc=7d0d0d0d7");  // the new storage, last slot first
  EXPECT_EQ(a.data(), storage);
  EXPECT_EQ(a.getDimension(), 2);
  EXPECT_EQ(a.getCapacity(), 2);
  EXPECT_EQ(a[2].value, 2);
}

struct alignas(64) CacheLine {
  std::int64_t value = 3;
};

TEST(ElementEvents, StorageHonoursTheElementAlignment) {
  Array<CacheLine> lines;
  Array<long double> wide;
  for (long n : {1L, 7L, 150L}) {
    lines.resize(n, n % 2 == 1);
    wide.resize(n, false);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(lines.data()) % 64, 0U) << n;
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(wide.data()) % alignof(long double), 0U);
    EXPECT_EQ(lines[n].value, 3);
  }
}

}  // namespace
}  // namespace lpconv
