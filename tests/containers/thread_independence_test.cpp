// Values in different threads are independent: two threads, each with its own vector of
// fractions, write and read it back at the same time and get what one thread alone gets.

#include <sstream>
#include <string>
#include <thread>

#include <lpconv/containers/vector.h>

#include "test_support.h"

namespace lpconv {
namespace {

// The text of the vector i/(i+7), i = 1..count, after a write, a read back and a second write
// (the read canonicalises every element through the arithmetic's work registers).
std::string fractionRoundTrip(long count) {
  Vector<QQ> v;
  v.resize(count, false);
  for (long i = 1; i <= count; ++i) v[i] = QQ(i, i + 7);
  std::ostringstream first;
  first << v;
  Vector<QQ> back;
  std::istringstream in(first.str());
  in >> back;
  QQ sum;
  for (long i = 1; i <= back.getDimension(); ++i) sum += back[i];
  std::ostringstream second;
  second << back << " " << sum;
  return second.str();
}

TEST(ThreadIndependence, FractionRoundTripInTwoThreads) {
  constexpr long kCount = 20000;
  constexpr int kRounds = 3;
  const std::string expected = fractionRoundTrip(kCount);
  ASSERT_NE(expected.find(" 1/8 2/9 "), std::string::npos);
  int same[2] = {0, 0};
  const auto rounds = [&expected](int& sameRounds) {
    for (int round = 0; round < kRounds; ++round) {
      sameRounds += fractionRoundTrip(kCount) == expected ? 1 : 0;
    }
  };
  std::thread other(rounds, std::ref(same[1]));
  rounds(same[0]);
  other.join();
  EXPECT_EQ(same[0], kRounds);
  EXPECT_EQ(same[1], kRounds);
}

}  // namespace
}  // namespace lpconv
