#include <lpconv/containers/array.h>

#include <gtest/gtest.h>

#include <climits>
#include <new>
#include <string>
#include <vector>

#include "test_support.h"

namespace lpconv {
namespace {

using testing_support::failureRegex;

TEST(ArrayTest, DefaultIsEmptyWithoutStorage) {
  Array<long> a;
  EXPECT_EQ(a.getDimension(), 0);
  EXPECT_EQ(a.getCapacity(), 0);
  EXPECT_EQ(a.data(), nullptr);
  EXPECT_FALSE(a.isNonEmpty());
  a.resize(0, false);
  EXPECT_EQ(a.data(), nullptr);
  a.resize(0, true);
  EXPECT_EQ(a.data(), nullptr);
}

TEST(ArrayTest, ReserveAddsAHundredAndExactGrowthDoesNot) {
  Array<long> a;
  a.resize(5, true);
  EXPECT_EQ(a.getDimension(), 5);
  EXPECT_EQ(a.getCapacity(), 105);
  const long* storage = a.data();
  a.resize(105, false);
  EXPECT_EQ(a.data(), storage);
  EXPECT_EQ(a.getCapacity(), 105);
  a.resize(106, false);
  EXPECT_NE(a.data(), storage);
  EXPECT_EQ(a.getCapacity(), 106);
  EXPECT_EQ(a.getDimension(), 106);
}

TEST(ArrayTest, ShrinkingKeepsStorageAndGrowthCopiesSlotZeroToDimension) {
  Array<long> a;
  a.resize(4, false);
  for (long i = 0; i <= 4; ++i) a[i] = 10 + i;
  a.resize(2, false);
  EXPECT_EQ(a.getCapacity(), 4);
  EXPECT_EQ(a.getDimension(), 2);
  a.resize(50, false);  // copies slots 0..2 only
  EXPECT_EQ(a.getCapacity(), 50);
  EXPECT_EQ(a[0], 10);
  EXPECT_EQ(a[1], 11);
  EXPECT_EQ(a[2], 12);
}

TEST(ArrayTest, ClearKeepsStorageReleaseDropsIt) {
  Array<std::string> a;
  a.resize(3, true);
  const std::string* storage = a.data();
  a.clear();
  EXPECT_EQ(a.getDimension(), 0);
  EXPECT_EQ(a.getCapacity(), 103);
  EXPECT_EQ(a.data(), storage);
  EXPECT_FALSE(a.isNonEmpty());  // storage held, still empty
  a.release();
  EXPECT_EQ(a.getDimension(), 0);
  EXPECT_EQ(a.getCapacity(), 0);
  EXPECT_EQ(a.data(), nullptr);
  a.resize(2, false);  // usable again
  a[2] = "x";
  EXPECT_EQ(a.at(2), "x");
}

TEST(ArrayTest, PlainArrayKeepsReusedSlotsConversionArrayZeroesThem) {
  Array<long> plain;
  ConversionArray<long> converting;
  for (Array<long>* a : std::vector<Array<long>*>{&plain, &converting}) {
    a->resize(10, false);
    for (long i = 1; i <= 10; ++i) (*a)[i] = i * 7;
    a->resize(3, false);
    a->resize(10, false);  // through the virtual slot
  }
  for (long i = 1; i <= 3; ++i) {
    EXPECT_EQ(plain[i], i * 7);
    EXPECT_EQ(converting[i], i * 7);
  }
  for (long i = 4; i <= 10; ++i) {
    EXPECT_EQ(plain[i], i * 7) << i;
    EXPECT_EQ(converting[i], 0) << i;
  }
}

TEST(ArrayTest, ConversionArrayZeroesAfterReallocationToo) {
  ConversionArray<long> a;
  a.resize(2, false);
  a[1] = 5;
  a[2] = 6;
  a.clear();            // dimension 0, storage kept
  a.resize(300, true);  // grows past the storage
  EXPECT_EQ(a.getCapacity(), 400);
  for (long i = 1; i <= 300; ++i) ASSERT_EQ(a[i], 0) << i;
}

TEST(ArrayTest, ConversionArrayOfClassElementsDoesNotTouchReusedSlots) {
  ConversionArray<std::string> a;
  a.resize(2, false);
  a[2] = "kept";
  a.resize(1, false);
  a.resize(2, false);
  EXPECT_EQ(a[2], "kept");
}

TEST(ArrayTest, AtAcceptsZeroToDimension) {
  for (long n : {0L, 1L, 5L}) {
    SCOPED_TRACE(n);
    Array<long> a;
    a.resize(n, false);
    for (long i = 1; i <= n; ++i) a[i] = 100 + i;
    a.at(0) = -1;  // passes the check even when nothing was allocated
    EXPECT_EQ(a.at(0), -1);
    if (n >= 1) {
      EXPECT_EQ(a.at(1), 101);
      EXPECT_EQ(a.at(n), 100 + n);
      EXPECT_EQ(&a.at(n), &a[n]);
    }
  }
}

TEST(ArrayTest, ConstAtZeroOnAnEmptyArrayIsADefaultValue) {
  const Array<std::string> a;
  EXPECT_EQ(a.at(0), "");
  EXPECT_EQ(a.data(), nullptr);
}

TEST(ArrayDeathTest, AtOutsideZeroToDimensionFails) {
  for (long n : {0L, 1L, 5L}) {
    SCOPED_TRACE(n);
    Array<long> a;
    a.resize(n, false);
    const Array<long>& constant = a;
    EXPECT_EXIT(a.at(n + 1), ::testing::ExitedWithCode(1),
                failureRegex("Array: index out of range"));
    EXPECT_EXIT(a.at(-1), ::testing::ExitedWithCode(1), failureRegex("Array: index out of range"));
    EXPECT_EXIT(constant.at(n + 1), ::testing::ExitedWithCode(1),
                failureRegex("Array: index out of range"));
    EXPECT_EXIT(a.at(LONG_MIN), ::testing::ExitedWithCode(1),
                failureRegex("Array: index out of range"));
  }
}

TEST(ArrayDeathTest, NegativeResizeFailsInAnyState) {
  Array<long> fresh;
  EXPECT_EXIT(fresh.resize(-1, false), ::testing::ExitedWithCode(1),
              failureRegex("array: dimension < 0"));
  ConversionArray<long> grown;
  grown.resize(5, true);
  EXPECT_EXIT(grown.resize(-1, true), ::testing::ExitedWithCode(1),
              failureRegex("array: dimension < 0"));
  Array<std::string> released;
  released.resize(3, false);
  released.release();
  EXPECT_EXIT(released.resize(LONG_MIN, false), ::testing::ExitedWithCode(1),
              failureRegex("array: dimension < 0"));
}

TEST(ArrayTest, UnrepresentableSizesThrowBadArrayNewLength) {
  Array<long> a;
  EXPECT_THROW(a.resize(LONG_MAX, true), std::bad_array_new_length);
  EXPECT_THROW(a.resize(LONG_MAX - 100, false), std::bad_array_new_length);
  EXPECT_THROW(a.resize(1L << 62, false), std::bad_array_new_length);
  EXPECT_EQ(a.getDimension(), 0);  // unchanged
}

TEST(ArrayTest, CopiesAreIndependentValues) {
  Array<std::string> a;
  a.resize(3, false);
  a[1] = "one";
  a[2] = "two";
  a[3] = "three";
  Array<std::string> copy(a);
  EXPECT_EQ(copy.getDimension(), 3);
  copy[1] = "changed";
  EXPECT_EQ(a[1], "one");

  Array<std::string> small;
  small.resize(1, false);
  small = a;  // grows
  EXPECT_EQ(small.getDimension(), 3);
  EXPECT_EQ(small[3], "three");

  Array<std::string> big;
  big.resize(10, false);
  const std::string* storage = big.data();
  big = a;  // fits: storage reused
  EXPECT_EQ(big.data(), storage);
  EXPECT_EQ(big.getDimension(), 3);
  EXPECT_EQ(big[2], "two");

  Array<std::string>& self = big;
  big = self;
  EXPECT_EQ(big.getDimension(), 3);
  EXPECT_EQ(big[3], "three");

  Array<std::string> empty;
  big = empty;
  EXPECT_EQ(big.getDimension(), 0);
}

// Counts live objects, so leaks and double destruction of slots show.
struct Tracked {
  static inline long live = 0;
  Tracked() { ++live; }
  Tracked(const Tracked&) { ++live; }
  Tracked& operator=(const Tracked&) = default;
  ~Tracked() { --live; }
};

TEST(ArrayTest, EverySlotIsDestroyedByReleaseAndDestructor) {
  const long before = Tracked::live;
  {
    Array<Tracked> a;
    a.resize(3, true);  // 104 slots
    EXPECT_EQ(Tracked::live - before, 104);
    a.resize(200, false);  // old block freed
    EXPECT_EQ(Tracked::live - before, 201);
    Array<Tracked> copy(a);
    EXPECT_EQ(Tracked::live - before, 402);
    copy.release();
    EXPECT_EQ(Tracked::live - before, 201);
  }
  EXPECT_EQ(Tracked::live, before);
}

}  // namespace
}  // namespace lpconv
