#include <gtest/gtest.h>

#include <string>

#include <lpconv/numbers/qq.h>
#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::failurePattern;

const QQ& inf() { return QQ::infinity(); }
const QQ& minf() { return QQ::minusInfinity(); }

struct RoundingCase {
  QQ x;
  const char* floor;
  const char* ceil;
  const char* round;
};

TEST(QQRoundingTest, FloorCeilRound) {
  const RoundingCase cases[] = {
      {QQ(7, 2), "3", "4", "4"},
      {QQ(-7, 2), "-4", "-3", "-4"},
      {QQ(-3), "-3", "-3", "-3"},
      {QQ(0), "0", "0", "0"},
      {QQ(5), "5", "5", "5"},
      {QQ(5, 2), "2", "3", "3"},
      {QQ(-5, 2), "-3", "-2", "-3"},
      {QQ(7, 3), "2", "3", "2"},
      {QQ(-7, 3), "-3", "-2", "-2"},
      {QQ(1, 2), "0", "1", "1"},
      {QQ(-1, 2), "-1", "0", "-1"},
      {QQ(-2, 5), "-1", "0", "0"},
      {QQ(2, 5), "0", "1", "0"},
      {QQ(99, 100), "0", "1", "1"},
      {inf(), "inf", "inf", "inf"},
      {minf(), "-inf", "-inf", "-inf"},
      {QQ(ZZ("-100000000000000000000000000001"), ZZ(10L)), "-10000000000000000000000000001",
       "-10000000000000000000000000000", "-10000000000000000000000000000"},
  };
  for (const RoundingCase& c : cases) {
    SCOPED_TRACE(toString(c.x));
    const QQ f = floor(c.x);
    const QQ e = ceil(c.x);
    const QQ r = round(c.x);
    EXPECT_EQ(toString(f), c.floor);
    EXPECT_EQ(toString(e), c.ceil);
    EXPECT_EQ(toString(r), c.round);
    EXPECT_TRUE(testing::isCanonical(f));
    EXPECT_TRUE(testing::isCanonical(e));
    EXPECT_TRUE(testing::isCanonical(r));
  }
  EXPECT_TRUE(round(QQ(-2, 5)).isPositive) << "round(-0.4) is 0 with a positive sign";
}

struct RemainderCase {
  QQ a;
  QQ b;
  const char* remainder;
};

TEST(QQRoundingTest, Remainder) {
  const RemainderCase cases[] = {
      {QQ(5), QQ(3), "-1"},         {QQ(7), QQ(2), "-1"},      {QQ(6), QQ(3), "0"},
      {QQ(-5), QQ(3), "1"},         {QQ(5), QQ(-3), "-1"},     {QQ(1), QQ(3), "1"},
      {QQ(7, 2), QQ(1, 3), "-1/6"}, {QQ(-7, 2), QQ(1), "1/2"},
  };
  for (const RemainderCase& c : cases) {
    EXPECT_EQ(toString(remainder(c.a, c.b)), c.remainder)
        << toString(c.a) << " rem " << toString(c.b);
  }
}

TEST(QQRoundingDeathTest, RemainderByZeroReachesTheInfinityRules) {
  // 5 / 0 is +inf, round passes it on, and inf · 0 is undefined.
  EXPECT_EXIT(remainder(QQ(5), QQ(0)), ::testing::ExitedWithCode(1),
              failurePattern("qq: INF * 0 is not defined!"));
}

// |a - b| <= tolerance, with tolerance 10^-digits.
::testing::AssertionResult closeTo(const QQ& a, const char* expected, int digits) {
  const QQ difference = a - QQ(expected);
  const QQ magnitude = difference.isPositive ? difference : -difference;
  ZZ scale;
  mpz_ui_pow_ui(scale.value, 10, static_cast<unsigned long>(digits));
  if (compare(magnitude, QQ(ZZ(1L), scale)) > 0) {
    return ::testing::AssertionFailure()
           << toString(a) << " is not within 1e-" << digits << " of " << expected;
  }
  return ::testing::AssertionSuccess();
}

struct ExactRootCase {
  QQ x;
  long n;
  const char* root;
};

TEST(QQRootTest, ExactRootsAndSpecialCases) {
  const ExactRootCase cases[] = {
      {QQ(-8), 3, "-2"},  {QQ(4), 2, "2"},      {QQ(1, 4), 2, "1/2"}, {QQ(8, 27), 3, "2/3"},
      {QQ(4), -2, "1/2"}, {QQ(-8), -3, "-1/2"}, {QQ(1000), 3, "10"},  {QQ(7, 3), 1, "2:1/3"},
      {inf(), 3, "inf"},  {minf(), 3, "-inf"},  {QQ(0), 5, "0"},      {QQ(81, 16), 4, "1:1/2"},
      {inf(), -3, "0"},
  };
  for (const ExactRootCase& c : cases) {
    const QQ r = root(c.x, ZZ(c.n));
    EXPECT_EQ(toString(r), c.root) << toString(c.x) << " root " << c.n;
    EXPECT_TRUE(testing::isCanonical(r));
  }
}

struct ApproximateCase {
  QQ x;
  long n;
  const char* expected;
  int digits;
};

TEST(QQRootTest, ApproximatedRootsCarryTheDigitLimit) {
  const ApproximateCase cases[] = {
      {QQ(2), 2, "1.41421356237309504880", 17},
      {QQ(2), 3, "1.25992104989487316477", 17},
      {QQ(-2), 3, "-1.25992104989487316477", 17},
      {QQ(1, 3), 2, "0.57735026918962576451", 17},
      {QQ(1000001), 2, "1000.00049999987500006250", 14},
      {QQ(3), 7, "1.16993081275868688646", 17},
      {QQ(2), -2, "0.70710678118654752440", 17},
      {QQ(ZZ("10000000000000000000000000000000000000001"), ZZ(1L)), 2,
       "100000000000000000000.000000000000000000005", 17},
  };
  for (const ApproximateCase& c : cases) {
    EXPECT_TRUE(closeTo(root(c.x, ZZ(c.n)), c.expected, c.digits))
        << toString(c.x) << " root " << c.n;
  }
}

TEST(QQRootDeathTest, UndefinedRootsAreFatal) {
  EXPECT_EXIT(root(QQ(5), ZZ(0L)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: zero-th roots are not defined"));
  EXPECT_EXIT(root(QQ(-8), ZZ(2L)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: complex roots are not implemented"));
  EXPECT_EXIT(root(QQ(-8), ZZ(-2L)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: complex roots are not implemented"));
  EXPECT_EXIT(root(QQ(0), ZZ(-2L)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: division by zero"));
}

struct PowerCase {
  QQ x;
  QQ e;
  const char* power;
};

TEST(QQPowerTest, ExactAndInfiniteCases) {
  const PowerCase cases[] = {
      {QQ(2), QQ(10), "1024"},
      {QQ(2), QQ(-3), "1/8"},
      {QQ(2, 3), QQ(3), "8/27"},
      {QQ(-2), QQ(3), "-8"},
      {QQ(-2), QQ(2), "4"},
      {QQ(10), QQ(-5), "1/100000"},
      {QQ(0), QQ(0), "1"},
      {QQ(7, 3), QQ(0), "1"},
      {QQ(4), QQ(1, 2), "2"},
      {QQ(8), QQ(2, 3), "4"},
      {QQ(-8), QQ(1, 3), "-2"},
      {QQ(4), QQ(3, 2), "8"},
      {QQ(1, 4), QQ(-3, 2), "8"},
      {QQ(2), inf(), "inf"},
      {QQ(1, 2), inf(), "0"},
      {QQ(1), inf(), "1"},
      {QQ(2), minf(), "0"},
      {QQ(1, 2), minf(), "inf"},
      {inf(), QQ(2), "inf"},
      {minf(), QQ(3), "-inf"},
      {minf(), QQ(2), "inf"},
      {inf(), QQ(0), "1"},
      {QQ(0), QQ(-1), "inf"},
      {QQ(0), QQ(5), "0"},
      {QQ(10), QQ(20), "100000000000000000000"},
  };
  for (const PowerCase& c : cases) {
    const QQ r = power(c.x, c.e);
    EXPECT_EQ(toString(r), c.power) << toString(c.x) << " ^ " << toString(c.e);
    EXPECT_TRUE(testing::isCanonical(r));
  }
  EXPECT_TRUE(closeTo(power(QQ(2), QQ(1, 2)), "1.41421356237309504880", 17));
}

TEST(QQPowerDeathTest, EvenRootOfANegativeBaseIsFatal) {
  EXPECT_EXIT(power(QQ(-4), QQ(1, 2)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: complex roots are not implemented"));
}

struct LogCase {
  QQ x;
  const char* log2;
  const char* log;
};

TEST(QQLogTest, LogarithmsAreExactForPowersOfTwoAndCloseOtherwise) {
  EXPECT_EQ(toString(log2(QQ(8))), "3");
  EXPECT_EQ(toString(log2(QQ(1, 4))), "-2");
  EXPECT_EQ(toString(log2(QQ(1))), "0");
  EXPECT_EQ(toString(log(QQ(1))), "0");
  EXPECT_EQ(toString(log2(inf())), "inf");
  EXPECT_EQ(toString(log(inf())), "inf");
  const LogCase cases[] = {
      {QQ(3), "1.58496250072115618145", "1.09861228866810969140"},
      {QQ(10), "3.32192809488736234787", "2.30258509299404568402"},
      {QQ(1, 3), "-1.58496250072115618145", "-1.09861228866810969140"},
      {QQ(2), "1", "0.69314718055994530942"},
      {QQ(ZZ("1000000000000000000000000"), ZZ(1L)), "79.72627427729669634889",
       "55.26204223185709641643"},
  };
  for (const LogCase& c : cases) {
    EXPECT_TRUE(closeTo(log2(c.x), c.log2, 16)) << toString(c.x);
    EXPECT_TRUE(closeTo(log(c.x), c.log, 16)) << toString(c.x);
  }
}

TEST(QQLogDeathTest, UndefinedLogarithmsAreFatal) {
  EXPECT_EXIT(log2(minf()), ::testing::ExitedWithCode(1),
              failurePattern("log2(-inf) is not implemented / defined"));
  EXPECT_EXIT(log2(QQ(0)), ::testing::ExitedWithCode(1),
              failurePattern("log2(x), x <= 0 is not implemented / defined"));
  EXPECT_EXIT(log2(QQ(-1, 2)), ::testing::ExitedWithCode(1),
              failurePattern("log2(x), x <= 0 is not implemented / defined"));
  EXPECT_EXIT(log(minf()), ::testing::ExitedWithCode(1),
              failurePattern("log(-inf) is not implemented / defined"));
  EXPECT_EXIT(log(QQ(-3)), ::testing::ExitedWithCode(1),
              failurePattern("log2(x), x <= 0 is not implemented / defined"));
}

}  // namespace
}  // namespace lpconv
