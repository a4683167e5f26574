#include <lpconv/numbers/qq.h>

#include <gtest/gtest.h>

#include <climits>
#include <cstddef>
#include <string>
#include <type_traits>
#include <utility>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::isCanonical;
using testing::Rational;

// Field-level expectation: sign, ganze, zaehler, nenner (decimal texts).
struct Fields {
  bool isPositive;
  const char* ganze;
  const char* zaehler;
  const char* nenner;
};

::testing::AssertionResult hasFields(const QQ& x, const Fields& f) {
  if (x.isInf || x.isPositive != f.isPositive || toString(x.ganze) != f.ganze ||
      toString(x.zaehler) != f.zaehler || toString(x.nenner) != f.nenner) {
    return ::testing::AssertionFailure()
           << "fields " << (x.isInf ? "inf " : "") << (x.isPositive ? "+" : "-") << x.ganze << " "
           << x.zaehler << "/" << x.nenner;
  }
  return ::testing::AssertionSuccess();
}

using testing::failurePattern;

QQ q(long n, long d = 1) { return QQ(n, d); }
const QQ& inf() { return QQ::infinity(); }
const QQ& minf() { return QQ::minusInfinity(); }

TEST(QQConstructTest, DefaultAndIntegers) {
  EXPECT_TRUE(hasFields(QQ(), {true, "0", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ(5), {true, "5", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ(-5L), {false, "5", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ(LONG_MIN), {false, "9223372036854775808", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ(ZZ(-12L)), {false, "12", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ(ZZ(0L)), {true, "0", "0", "1"}));
  ZZ moved(-3L);
  EXPECT_TRUE(hasFields(QQ(std::move(moved)), {false, "3", "0", "1"}));
}

// Floating values must go through fromDbl; an implicit route through long would cut them.
static_assert(!std::is_constructible_v<QQ, double>);
static_assert(!std::is_constructible_v<QQ, long double>);
static_assert(!std::is_constructible_v<QQ, float>);
static_assert(!std::is_constructible_v<ZZ, double>);
static_assert(std::is_convertible_v<std::size_t, QQ>);

TEST(QQConstructTest, UnsignedLong) {
  EXPECT_TRUE(hasFields(QQ(ULONG_MAX), {true, "18446744073709551615", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ(std::size_t{0}), {true, "0", "0", "1"}));
}

TEST(QQConstructTest, InfinityConstructor) {
  const QQ plus(true);
  const QQ minus(false);
  EXPECT_TRUE(plus.isInf);
  EXPECT_TRUE(plus.isPositive);
  EXPECT_TRUE(minus.isInf);
  EXPECT_FALSE(minus.isPositive);
  EXPECT_TRUE(isCanonical(plus));
  EXPECT_TRUE(isCanonical(minus));
  EXPECT_TRUE(QQ::infinity().isInf && QQ::infinity().isPositive);
  EXPECT_TRUE(QQ::minusInfinity().isInf && !QQ::minusInfinity().isPositive);
  EXPECT_FALSE(plus.isZero());
}

struct FractionCase {
  long numerator, denominator;
  Fields expected;
};

TEST(QQConstructTest, FractionsAreNormalisedAndSignsCombined) {
  const FractionCase cases[] = {
      {6, -4, {false, "1", "1", "2"}},   {0, -5, {true, "0", "0", "1"}},
      {-6, -4, {true, "1", "1", "2"}},   {-6, 4, {false, "1", "1", "2"}},
      {4, 2, {true, "2", "0", "1"}},     {1, 3, {true, "0", "1", "3"}},
      {-14, 21, {false, "0", "2", "3"}}, {0, 0, {true, "0", "0", "1"}},
      {100, 7, {true, "14", "2", "7"}},
  };
  for (const FractionCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.numerator << "/" << c.denominator);
    EXPECT_TRUE(hasFields(QQ(c.numerator, c.denominator), c.expected));
    EXPECT_TRUE(hasFields(QQ(ZZ(c.numerator), ZZ(c.denominator)), c.expected));
    ZZ n(c.numerator);
    ZZ d(c.denominator);
    EXPECT_TRUE(hasFields(QQ(std::move(n), std::move(d)), c.expected));
  }
}

TEST(QQConstructTest, SharedConstants) {
  EXPECT_TRUE(hasFields(QQ::zero(), {true, "0", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ::one(), {true, "1", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ::two(), {true, "2", "0", "1"}));
  EXPECT_TRUE(hasFields(QQ::half(), {true, "0", "1", "2"}));
  QQ copy = QQ::one();
  copy += copy;
  EXPECT_TRUE(hasFields(QQ::one(), {true, "1", "0", "1"})) << "the constant is copied out";
}

TEST(QQConstructTest, CopyAndMove) {
  QQ a(7, 3);
  QQ b(a);
  b += QQ(1);
  EXPECT_TRUE(hasFields(a, {true, "2", "1", "3"}));
  QQ c(std::move(b));
  EXPECT_TRUE(hasFields(c, {true, "3", "1", "3"}));
  a = std::move(c);
  EXPECT_TRUE(hasFields(a, {true, "3", "1", "3"}));
  QQ d;
  d = a;
  EXPECT_TRUE(hasFields(d, {true, "3", "1", "3"}));
  d = QQ::infinity();
  EXPECT_TRUE(d.isInf);
}

enum class Op { kAdd, kSub, kMul, kDiv };

QQ& apply(Op op, QQ& r, const QQ& a, const QQ& b) {
  switch (op) {
    case Op::kAdd:
      return add(r, a, b);
    case Op::kSub:
      return sub(r, a, b);
    case Op::kMul:
      return mul(r, a, b);
    case Op::kDiv:
      return div(r, a, b);
  }
  return r;
}

void oracle(Op op, mpq_t r, const mpq_t a, const mpq_t b) {
  switch (op) {
    case Op::kAdd:
      mpq_add(r, a, b);
      break;
    case Op::kSub:
      mpq_sub(r, a, b);
      break;
    case Op::kMul:
      mpq_mul(r, a, b);
      break;
    case Op::kDiv:
      mpq_div(r, a, b);
      break;
  }
}

// Every operation against GMP's rationals, with the result written into a fresh value, into the
// first operand, into the second operand, or into both when they are one object.
void differential(Op op, std::uint64_t seed) {
  testing::RandomNumbers random(seed);
  Rational ra, rb, expected;
  for (int i = 0; i < 4000; ++i) {
    QQ a = random.finite();
    QQ b = random.below(10) == 0 ? a : random.finite();
    if (op == Op::kDiv && b.isZero()) b = QQ(3, 7);
    if ((op == Op::kMul || op == Op::kDiv) && random.below(8) == 0) {
      // An integer part with a sign of its own (as the parser keeps "--5") counts as signed.
      negate(random.below(2) == 0 ? a.ganze : b.ganze);
    }
    testing::toRational(a, ra.value);
    testing::toRational(b, rb.value);
    const std::string context = toString(a) + " and " + toString(b);
    int aliasing = static_cast<int>(random.below(4));
    if (op == Op::kDiv && aliasing == 3 && a.isZero()) aliasing = 0;
    QQ fresh;
    QQ* result = &fresh;
    switch (aliasing) {
      case 0:
        apply(op, fresh, a, b);
        break;
      case 1:
        result = &apply(op, a, a, b);
        break;
      case 2:
        result = &apply(op, b, a, b);
        break;
      default:
        b = a;
        testing::toRational(b, rb.value);
        result = &apply(op, a, a, a);
        break;
    }
    oracle(op, expected.value, ra.value, rb.value);
    ASSERT_TRUE(testing::equalsRational(*result, expected.value))
        << context << " aliasing " << aliasing;
    ASSERT_TRUE(isCanonical(*result)) << context;
  }
}

TEST(QQArithmeticTest, AddAgreesWithRationalOracle) { differential(Op::kAdd, 101); }
TEST(QQArithmeticTest, SubAgreesWithRationalOracle) { differential(Op::kSub, 102); }
TEST(QQArithmeticTest, MulAgreesWithRationalOracle) { differential(Op::kMul, 103); }
TEST(QQArithmeticTest, DivAgreesWithRationalOracle) { differential(Op::kDiv, 104); }

TEST(QQCompareTest, AgreesWithRationalOracleAndInfinities) {
  testing::RandomNumbers random(106);
  Rational ra, rb;
  for (int i = 0; i < 4000; ++i) {
    const QQ a = random.any();
    const QQ b = random.below(8) == 0 ? a : random.any();
    int expected;
    if (a.isInf || b.isInf) {
      const int va = a.isInf ? (a.isPositive ? 1 : -1) : 0;
      const int vb = b.isInf ? (b.isPositive ? 1 : -1) : 0;
      expected = (va > vb) - (va < vb);
    } else {
      testing::toRational(a, ra.value);
      testing::toRational(b, rb.value);
      const int c = mpq_cmp(ra.value, rb.value);
      expected = (c > 0) - (c < 0);
    }
    const std::int64_t c = compare(a, b);
    ASSERT_EQ((c > 0) - (c < 0), expected) << toString(a) << " vs " << toString(b);
    EXPECT_EQ(a == b, expected == 0);
    EXPECT_EQ(a != b, expected != 0);
    EXPECT_EQ(a < b, expected < 0);
    EXPECT_EQ(a <= b, expected <= 0);
    EXPECT_EQ(a > b, expected > 0);
    EXPECT_EQ(a >= b, expected >= 0);
  }
}

struct CompareCase {
  QQ a;
  QQ b;
  int sign;
};

TEST(QQCompareTest, ListedCases) {
  const CompareCase cases[] = {
      {inf(), inf(), 0},      {minf(), minf(), 0},     {minf(), q(-5), -1},
      {q(1, 3), q(1, 2), -1}, {q(-1, 3), q(-1, 2), 1}, {q(5), inf(), -1},
      {q(-5), inf(), -1},     {inf(), q(5), 1},        {minf(), inf(), -1},
      {q(0), q(0, -3), 0},    {q(7, 2), q(10, 3), 1},  {q(-7, 2), q(-10, 3), -1},
  };
  for (const CompareCase& c : cases) {
    const std::int64_t result = compare(c.a, c.b);
    EXPECT_EQ((result > 0) - (result < 0), c.sign) << toString(c.a) << " vs " << toString(c.b);
  }
  const QQ x(3, 4);
  EXPECT_EQ(compare(x, x), 0);
}

struct ResultCase {
  QQ a;
  Op op;
  QQ b;
  const char* expected;
};

TEST(QQArithmeticTest, InfinityAndZeroRules) {
  const ResultCase cases[] = {
      {inf(), Op::kAdd, q(5), "inf"},       {q(5), Op::kSub, inf(), "-inf"},
      {minf(), Op::kAdd, q(5), "-inf"},     {q(5), Op::kAdd, minf(), "-inf"},
      {inf(), Op::kAdd, inf(), "inf"},      {minf(), Op::kAdd, minf(), "-inf"},
      {inf(), Op::kSub, minf(), "inf"},     {minf(), Op::kSub, inf(), "-inf"},
      {minf(), Op::kSub, q(5), "-inf"},     {q(-5), Op::kSub, inf(), "-inf"},
      {q(-5), Op::kSub, minf(), "inf"},     {inf(), Op::kSub, q(-2), "inf"},
      {minf(), Op::kMul, q(-2), "inf"},     {inf(), Op::kMul, q(-2), "-inf"},
      {q(1, 2), Op::kMul, minf(), "-inf"},  {q(-1, 2), Op::kMul, minf(), "inf"},
      {inf(), Op::kMul, inf(), "inf"},      {minf(), Op::kMul, inf(), "-inf"},
      {q(3), Op::kDiv, q(0), "inf"},        {q(-3), Op::kDiv, q(0), "-inf"},
      {q(7), Op::kDiv, inf(), "0"},         {q(-7), Op::kDiv, minf(), "0"},
      {inf(), Op::kDiv, q(-2), "-inf"},     {minf(), Op::kDiv, q(-2), "inf"},
      {inf(), Op::kDiv, q(0), "inf"},       {minf(), Op::kDiv, q(0), "-inf"},
      {q(5), Op::kSub, q(5), "0"},          {q(-5), Op::kAdd, q(5), "0"},
      {q(1, 2), Op::kAdd, q(1, 3), "5/6"},  {q(1, 2), Op::kAdd, q(1, 2), "1"},
      {q(1, 3), Op::kSub, q(1, 2), "-1/6"}, {q(1), Op::kSub, q(3, 2), "-1/2"},
      {q(0), Op::kMul, q(-5), "0"},         {q(-5), Op::kMul, q(0), "0"},
      {q(0), Op::kDiv, q(-5), "0"},         {q(-1, 6), Op::kMul, q(-3), "1/2"},
  };
  for (const ResultCase& c : cases) {
    QQ r;
    apply(c.op, r, c.a, c.b);
    EXPECT_EQ(toString(r), c.expected)
        << toString(c.a) << " op " << static_cast<int>(c.op) << " " << toString(c.b);
    EXPECT_TRUE(isCanonical(r));
  }
}

TEST(QQArithmeticTest, ZeroResultsArePositive) {
  QQ r;
  sub(r, q(5), q(5));
  EXPECT_TRUE(hasFields(r, {true, "0", "0", "1"}));
  add(r, q(-7, 3), q(7, 3));
  EXPECT_TRUE(hasFields(r, {true, "0", "0", "1"}));
  mul(r, q(-7, 3), q(0));
  EXPECT_TRUE(hasFields(r, {true, "0", "0", "1"}));
  EXPECT_TRUE(hasFields(-QQ(), {true, "0", "0", "1"}));
  const QQ zero;
  EXPECT_TRUE(hasFields(-zero, {true, "0", "0", "1"}));
}

TEST(QQArithmeticTest, UnaryMinusFlipsSignsAndInfinities) {
  EXPECT_EQ(toString(-q(7, 2)), "-3:1/2");
  EXPECT_EQ(toString(-q(-7, 2)), "3:1/2");
  EXPECT_EQ(toString(-inf()), "-inf");
  EXPECT_EQ(toString(-minf()), "inf");
  const QQ a(1, 3);
  const QQ negated = -a;
  EXPECT_EQ(toString(a), "1/3");
  EXPECT_EQ(toString(negated), "-1/3");
}

TEST(QQArithmeticTest, CompoundAssignmentWithItself) {
  QQ x(-3, 4);
  x += x;
  EXPECT_EQ(toString(x), "-1:1/2");
  x *= x;
  EXPECT_EQ(toString(x), "2:1/4");
  x /= QQ(-3, 2);
  EXPECT_EQ(toString(x), "-1:1/2");
  x -= x;
  EXPECT_EQ(toString(x), "0");
  EXPECT_TRUE(x.isPositive);
}

TEST(QQArithmeticTest, PostfixDecrementReturnsTheOldValue) {
  QQ x(1, 2);
  const QQ old = x--;
  EXPECT_EQ(toString(old), "1/2");
  EXPECT_EQ(toString(x), "-1/2");
  QQ i = inf();
  i--;
  EXPECT_EQ(toString(i), "inf");
}

TEST(QQArithmeticTest, SignedParts) {
  EXPECT_EQ(toString(signedGanze(q(-7, 2))), "-3");
  EXPECT_EQ(toString(signedZaehler(q(-7, 2))), "-1");
  EXPECT_EQ(toString(signedGanze(q(7, 2))), "3");
  EXPECT_EQ(toString(signedZaehler(q(7, 2))), "1");
  EXPECT_EQ(toString(signedGanze(q(0))), "0");
}

TEST(QQNormalizeTest, BringsFieldsIntoCanonicalForm) {
  QQ x;
  x.isPositive = false;
  x.ganze = ZZ(2L);
  x.zaehler = ZZ(14L);
  x.nenner = ZZ(4L);
  normalize(x);
  EXPECT_TRUE(hasFields(x, {false, "5", "1", "2"}));
  x.ganze = ZZ(0L);
  x.zaehler = ZZ(0L);
  x.nenner = ZZ(9L);
  normalize(x);
  EXPECT_TRUE(hasFields(x, {true, "0", "0", "1"}));
  x.ganze = ZZ(1L);
  x.zaehler = ZZ(6L);
  x.nenner = ZZ(3L);
  normalize(x);
  EXPECT_TRUE(hasFields(x, {true, "3", "0", "1"}));
  QQ infinity(false);
  normalize(infinity);
  EXPECT_TRUE(infinity.isInf);
}

TEST(QQNormalizeDeathTest, NegativeFieldIsFatal) {
  const char* message =
      "A ganze / zaehler / nenner sign has been set, though it should not be used";
  for (int field = 0; field < 3; ++field) {
    QQ x(7, 3);
    ZZ& target = field == 0 ? x.ganze : field == 1 ? x.zaehler : x.nenner;
    negate(target);
    EXPECT_EXIT(normalize(x), ::testing::ExitedWithCode(1), failurePattern(message)) << field;
  }
}

TEST(QQArithmeticDeathTest, UndefinedOperationsAreFatal) {
  QQ r;
  EXPECT_EXIT(sub(r, inf(), inf()), ::testing::ExitedWithCode(1),
              failurePattern("INF - INF is not defined"));
  EXPECT_EXIT(add(r, inf(), minf()), ::testing::ExitedWithCode(1),
              failurePattern("INF - INF is not defined"));
  EXPECT_EXIT(add(r, minf(), inf()), ::testing::ExitedWithCode(1),
              failurePattern("INF - INF is not defined"));
  EXPECT_EXIT(sub(r, minf(), minf()), ::testing::ExitedWithCode(1),
              failurePattern("INF - INF is not defined"));
  EXPECT_EXIT(mul(r, inf(), q(0)), ::testing::ExitedWithCode(1),
              failurePattern("qq: INF * 0 is not defined!"));
  EXPECT_EXIT(mul(r, minf(), q(0)), ::testing::ExitedWithCode(1),
              failurePattern("qq: INF * 0 is not defined!"));
  EXPECT_EXIT(mul(r, q(0), minf()), ::testing::ExitedWithCode(1),
              failurePattern("qq: 0 * INF is not defined!"));
  EXPECT_EXIT(div(r, inf(), minf()), ::testing::ExitedWithCode(1),
              failurePattern("qq: oo / oo is not defined"));
  EXPECT_EXIT(div(r, q(0), q(0)), ::testing::ExitedWithCode(1),
              failurePattern("0 / 0 is not defined"));
}

TEST(QQCommonDenominatorTest, RewritesBothFractions) {
  ZZ az, bz, common;
  commonDenominator(az, bz, common, q(1, 4), q(5, 6));
  EXPECT_EQ(toString(az), "3");
  EXPECT_EQ(toString(bz), "10");
  EXPECT_EQ(toString(common), "12");
  // Only the fractions take part; the integer parts and signs are ignored.
  commonDenominator(az, bz, common, q(-9, 4), q(3));
  EXPECT_EQ(toString(az), "1");
  EXPECT_EQ(toString(bz), "0");
  EXPECT_EQ(toString(common), "4");
  // Outputs may be fields of the inputs.
  QQ a(2, 9);
  QQ b(1, 6);
  commonDenominator(a.zaehler, b.zaehler, a.nenner, a, b);
  EXPECT_EQ(toString(a.zaehler), "4");
  EXPECT_EQ(toString(b.zaehler), "3");
  EXPECT_EQ(toString(a.nenner), "18");
}

TEST(QQCommonDenominatorDeathTest, SameOutputOrInfinityIsFatal) {
  ZZ x, y;
  EXPECT_EXIT(commonDenominator(x, x, y, q(1, 2), q(1, 3)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: The ZZs have the same address"));
  EXPECT_EXIT(commonDenominator(x, y, y, q(1, 2), q(1, 3)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: The ZZs have the same address"));
  EXPECT_EXIT(commonDenominator(x, y, x, q(1, 2), q(1, 3)), ::testing::ExitedWithCode(1),
              failurePattern("QQ: The ZZs have the same address"));
  ZZ z;
  EXPECT_EXIT(
      commonDenominator(x, y, z, q(1, 2), inf()), ::testing::ExitedWithCode(1),
      failurePattern("a_z, b_z can not be set to ZZ::INF -- isInf is logic only available in QQ "
                     "class"));
}

struct LimitCase {
  const char* zaehler;
  const char* nenner;
  long maxDigits;
  bool keepLeading;
  const char* zaehlerAfter;
  const char* nennerAfter;
};

TEST(QQLimitDigitsTest, ShortensTheFraction) {
  const LimitCase cases[] = {
      // Short enough: unchanged.
      {"1", "3", 18, true, "1", "3"},
      {"12", "987654321", 9, false, "12", "987654321"},
      // More numerator digits than the excess: both lose the excess digits.
      {"1234567", "98765432", 5, true, "1234", "98765"},
      {"1234567", "98765432", 5, false, "1234", "98765"},
      // Too few numerator digits: the leading digit is kept over a scaled denominator...
      {"12", "987654321", 5, true, "1", "98765000"},
      {"7", "123456789", 4, true, "7", "123400000"},
      // ...unless that denominator is the old one, or the leading digit is not kept.
      {"3", "500000", 3, true, "0", "1"},
      {"12", "987654321", 5, false, "0", "1"},
  };
  for (const LimitCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.zaehler << "/" << c.nenner << " to " << c.maxDigits);
    QQ x;
    x.zaehler = ZZ(c.zaehler);
    x.nenner = ZZ(c.nenner);
    x.ganze = ZZ(4L);
    limitDigits(x, c.maxDigits, c.keepLeading);
    EXPECT_EQ(toString(x.zaehler), c.zaehlerAfter);
    EXPECT_EQ(toString(x.nenner), c.nennerAfter);
    EXPECT_EQ(toString(x.ganze), "4");
  }
}

// Restores the process-wide switch even when an expectation fails.
class ShortenedProducts : public ::testing::Test {
 protected:
  void TearDown() override { shortenProducts = false; }
};

TEST_F(ShortenedProducts, ProductsAreExactWhileNoTermNeedsShortening) {
  shortenProducts = true;
  testing::RandomNumbers random(107);
  Rational ra, rb, expected;
  for (int i = 0; i < 2000; ++i) {
    // Denominators below 10^9 keep every fraction term within the 18-digit limit.
    const QQ a(ZZ(static_cast<long>(random.engine()() >> 1) - (1L << 62)),
               ZZ(static_cast<long>(1 + random.below(999999999))));
    const QQ b(ZZ(static_cast<long>(random.below(2000)) - 1000),
               ZZ(static_cast<long>(1 + random.below(999999999))));
    testing::toRational(a, ra.value);
    testing::toRational(b, rb.value);
    mpq_mul(expected.value, ra.value, rb.value);
    const QQ product = a * b;
    ASSERT_TRUE(testing::equalsRational(product, expected.value))
        << toString(a) << " * " << toString(b);
    ASSERT_TRUE(isCanonical(product));
  }
}

TEST_F(ShortenedProducts, SwitchShortensTheFractionTerms) {
  const QQ a(ZZ("100000000000"), ZZ("99999999999"));  // 1:1/99999999999
  ASSERT_FALSE(shortenProducts);
  const QQ exact = a * a;
  EXPECT_EQ(toString(exact),
            toString(QQ(ZZ("10000000000000000000000"), ZZ("9999999999800000000001"))));
  shortenProducts = true;
  const QQ shortened = a * a;
  // The fraction term 1/(99999999999^2) keeps its leading digit over the denominator with its
  // last four digits dropped: 1/9999999999800000000000.
  QQ expected = QQ(1) + QQ(ZZ(2L), ZZ("99999999999")) + QQ(ZZ(1L), ZZ("9999999999800000000000"));
  EXPECT_EQ(toString(shortened), toString(expected));
  EXPECT_TRUE(isCanonical(shortened));
  // Small products are not affected.
  EXPECT_EQ(toString(q(7, 3) * q(-5, 4)), "-2:11/12");
}

// The parser keeps a doubly signed integer as read ("--5": isPositive false, ganze -5). The
// operations then treat the integer part as signed, so the value counts as 5.
TEST(QQSignedFieldTest, OperationsTreatTheIntegerPartAsSigned) {
  const QQ doubled("--5");
  ASSERT_EQ(toString(doubled.ganze), "-5");
  EXPECT_EQ(toString(doubled * QQ(10)), "50");
  EXPECT_EQ(toString(QQ("--5e1")), "50");
  EXPECT_EQ(toString(QQ("+-5") * QQ(2)), "-10");
  EXPECT_EQ(toString(QQ(10) / doubled), "2");
  EXPECT_EQ(toString(doubled / QQ(2)), "2:1/2");
  EXPECT_EQ(toString(doubled + QQ(1)), "6");
  EXPECT_EQ(toString(QQ(-1) - doubled), "-6");
}

TEST(QQSignedFieldDeathTest, SumsWithANegativeIntegerPartFailAtNormalisation) {
  const char* message =
      "A ganze / zaehler / nenner sign has been set, though it should not be used";
  EXPECT_EXIT(QQ(1) - QQ("--5"), ::testing::ExitedWithCode(1), failurePattern(message));
  EXPECT_EXIT(QQ("+-5") + QQ(1), ::testing::ExitedWithCode(1), failurePattern(message));
}

}  // namespace
}  // namespace lpconv
