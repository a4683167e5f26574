#include <gtest/gtest.h>
#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/qq.h>

#include <functional>
#include <string>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::outcome;

TEST(QQFunctionsTest, FloorCeilRoundRemainder) {
  // clang-format off
  const std::tuple<QQ, const char*> cases[] = {
      // floor ceil round, remainder by 1/3
      {QQ(7, 2), "3 4 4 -1/6"}, {QQ(-7, 2), "-4 -3 -4 1/6"}, {QQ(-3), "-3 -3 -3 0"},
      {QQ(-2, 5), "-1 0 0 -1/15"}, {QQ(1, 2), "0 1 1 -1/6"}, {QQ(true), "inf inf inf "},
      {QQ(ZZ("-100000000000000000000000000001"), ZZ(10L)),
       "-10000000000000000000000000001 -10000000000000000000000000000 "
       "-10000000000000000000000000000 -1/10"},
  };
  // clang-format on
  for (const auto& [x, expected] : cases) {
    const std::string got = toString(floor(x)) + " " + toString(ceil(x)) + " " +
                            toString(round(x)) + " " +
                            (x.isInf ? "" : toString(remainder(x, QQ(1, 3))));
    EXPECT_EQ(got, expected);
  }
  EXPECT_TRUE(round(QQ(-2, 5)).isPositive);
}

// Exact results as written; approximations as their first 17 digits; failures as messages.
TEST(QQFunctionsTest, RootsPowersLogarithms) {
  const auto digits = [](const QQ& x) { return toString(floor(x * QQ(ZZ("100000000000000000")))); };
  // clang-format off
  const std::tuple<std::function<QQ()>, const char*> cases[] = {
      {[] { return root(QQ(-8), ZZ(3L)); }, "-2"},
      {[] { return root(QQ(81, 16), ZZ(4L)); }, "1:1/2"},
      {[] { return root(QQ(-8), ZZ(-3L)); }, "-1/2"}, {[] { return root(QQ(true), ZZ(-3L)); }, "0"},
      {[] { return power(QQ(1, 4), QQ(-3, 2)); }, "8"},
      {[] { return power(QQ(-8), QQ(1, 3)); }, "-2"},
      {[] { return power(QQ(1, 2), QQ(false)); }, "inf"},
      {[] { return power(QQ(false), QQ(2)); }, "inf"}, {[] { return power(QQ(0), QQ(-1)); }, "inf"},
      {[] { return power(QQ(0), QQ(0)); }, "1"}, {[] { return log2(QQ(1, 4)); }, "-2"},
      {[] { return log(QQ(true)); }, "inf"},
      {[] { return root(QQ(5), ZZ(0L)); }, messages::kZerothRoot},
      {[] { return root(QQ(-8), ZZ(-2L)); }, messages::kComplexRoot},
      {[] { return power(QQ(-4), QQ(1, 2)); }, messages::kComplexRoot},
      {[] { return root(QQ(0), ZZ(-2L)); }, messages::kDivisionByZero},
      {[] { return log2(QQ(false)); }, messages::kLog2MinusInf},
      {[] { return log(QQ(-3)); }, messages::kLog2NotPositive},
      {[] { return log(QQ(false)); }, messages::kLogMinusInf},
      {[] { return remainder(QQ(5), QQ(0)); }, messages::kInfTimesZero}
  };
  // clang-format on
  for (const auto& [f, expected] : cases)
    EXPECT_EQ(outcome([f = f] { return toString(f()); }), expected);
  // clang-format off
  const std::tuple<QQ, const char*> approximations[] = {
      {root(QQ(2), ZZ(2L)), "141421356237309504"}, {root(QQ(-2), ZZ(3L)), "-125992104989487317"},
      {root(QQ(2), ZZ(-2L)), "70710678118654752"}, {power(QQ(2), QQ(1, 2)), "141421356237309504"},
      {root(QQ(1000001), ZZ(2L)), "100000049999987500006"}, {log2(QQ(3)), "158496250072115618"},
      {log(QQ(10)), "230258509299404568"}, {log(QQ(1, 3)), "-109861228866810970"}
  };
  // clang-format on
  for (const auto& [x, expected] : approximations) {
    const std::string got = digits(x);
    EXPECT_EQ(got.substr(0, 14), std::string(expected).substr(0, 14)) << toString(x);
  }
}

}  // namespace
}  // namespace lpconv
