// Storage that is made on first use: a slot a resize reaches for the first time holds the value
// fresh storage gives, whatever the memory held before, and values survive the moves between
// blocks.

#include <sstream>
#include <string>
#include <thread>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/vector.h>

#include "test_support.h"

namespace lpconv {
namespace {

template <typename T>
long countNonZero(const Vector<T>& v) {
  long count = 0;
  for (long i = 1; i <= v.getDimension(); ++i) count += v[i] == T{} ? 0 : 1;
  return count;
}

// A second container over the heap memory of a first that was filled and freed must read as
// fresh.
TEST(SlotStorage, RecycledMemoryReadsAsFresh) {
  for (const long n : {300000L, 30000L, 5L}) {
    for (int round = 0; round < 2; ++round) {
      Vector<long> longs;
      longs.resize(n, true);
      Vector<QQ> rationals;
      rationals.resize(n / 10 + 1, false);
      ASSERT_EQ(countNonZero(longs) + countNonZero(rationals), 0) << n;
      for (long i = 1; i <= n; ++i) longs[i] = 7;
      for (long i = 1; i <= n / 10 + 1; ++i) rationals[i] = QQ(1L, 3L);
    }
  }
}

// The rows a matrix read creates hold only their elements; the spare slots appear when a resize
// reaches them: fresh where never used, old values where used before.
TEST(SlotStorage, SpareSlotsOfReadRowsAppearWhenReached) {
  Matrix<QQ> m;
  std::istringstream("[ [ 1 2 ] [ 3 4 ] ]") >> m;
  Vector<QQ>& row = m.at(2);
  const long capacity = row.getCapacity();
  ASSERT_EQ(capacity, 102);
  row.resize(60, false);
  row[45] = QQ(5L);
  row.resize(10, false);
  row.resize(capacity, false);
  EXPECT_EQ(row.getCapacity(), capacity);
  EXPECT_EQ(toString(row[2]), "4");
  EXPECT_EQ(toString(row[45]), "5");
  EXPECT_EQ(countNonZero(row), 3);
}

// Thousands of rows are read, outgrow their capacity and are freed with their matrix, round after
// round, in two threads at once: what each thread writes back is what it read.
TEST(SlotStorage, ManyRowsReadAgainAndAgainInTwoThreads) {
  std::string text = "[\n";
  for (long r = 1; r <= 6000; ++r) {
    text += "[ ";
    for (long j = 1; j <= 10; ++j) text += std::to_string((r * 31 + j) % 97 - 48) + " ";
    text += "]\n";
  }
  text += "]";
  const auto readRounds = [&text](int& sameRounds) {
    for (int round = 0; round < 3; ++round) {
      Matrix<QQ> m;
      std::istringstream(text) >> m;
      for (long r = 1; r <= m.getRows(); r += 7) m.at(r).resize(round * 200 + 11, true);
      for (long r = 1; r <= m.getRows(); r += 7) m.at(r).resize(10, false);
      std::ostringstream out;
      out << m;
      sameRounds += out.str() == text ? 1 : 0;
    }
  };
  int first = 0;
  int second = 0;
  std::thread other(readRounds, std::ref(second));
  readRounds(first);
  other.join();
  EXPECT_EQ(first, 3);
  EXPECT_EQ(second, 3);
}

}  // namespace
}  // namespace lpconv
