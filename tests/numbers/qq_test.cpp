#include <gtest/gtest.h>
#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/qq.h>

#include <functional>
#include <string>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::isCanonical;
using testing::outcome;
using testing::Rational;

QQ q(long n, long d = 1) { return QQ(n, d); }
const QQ inf = QQ(true);
const QQ minf = QQ(false);

enum class Op { kAdd, kSub, kMul, kDiv };

QQ& (*const kOperations[])(QQ&, const QQ&, const QQ&) = {add, sub, mul, div};
void (*const kOracles[])(mpq_ptr, mpq_srcptr, mpq_srcptr) = {mpq_add, mpq_sub, mpq_mul, mpq_div};

QQ& apply(Op op, QQ& r, const QQ& a, const QQ& b) {
  return kOperations[static_cast<int>(op)](r, a, b);
}
void oracle(Op op, mpq_t r, const mpq_t a, const mpq_t b) {
  kOracles[static_cast<int>(op)](r, a, b);
}

// Every operation and the comparison against GMP's rationals, the result written into a fresh
// value, into either operand, or into both when they are one object.
TEST(QQTest, AgreesWithGmpRationalsUnderAliasing) {
  testing::RandomNumbers random(101);
  Rational ra, rb, expected;
  for (int i = 0; i < 12000; ++i) {
    const Op op = static_cast<Op>(i % 4);
    QQ a = random.finite();
    QQ b = random.below(10) == 0 ? a : random.finite();
    if (op == Op::kDiv && b.isZero()) b = QQ(3, 7);
    if ((op == Op::kMul || op == Op::kDiv) && random.below(8) == 0) {
      // An integer part with a sign of its own (as the parser keeps "--5") counts as signed.
      QQ& integer = random.below(2) == 0 ? a : b;
      if (integer.zaehler.isZero()) negate(integer.ganze);
    }
    int aliasing = static_cast<int>(random.below(4));
    if (aliasing == 3 && op == Op::kDiv && a.isZero()) aliasing = 0;
    if (aliasing == 3) b = a;
    testing::toRational(a, ra.value);
    testing::toRational(b, rb.value);
    const std::string context = toString(a) + " and " + toString(b);
    if (isCanonical(a) && isCanonical(b)) {
      const int sign = mpq_cmp(ra.value, rb.value);
      const std::int64_t c = compare(a, b);
      ASSERT_EQ((c > 0) - (c < 0), (sign > 0) - (sign < 0)) << context;
    }
    QQ fresh;
    QQ& result = aliasing == 0   ? apply(op, fresh, a, b)
                 : aliasing == 1 ? apply(op, a, a, b)
                 : aliasing == 2 ? apply(op, b, a, b)
                                 : apply(op, a, a, a);
    oracle(op, expected.value, ra.value, rb.value);
    testing::toRational(result, ra.value);
    ASSERT_TRUE(!result.isInf && mpq_equal(ra.value, expected.value)) << context << " " << aliasing;
    ASSERT_TRUE(isCanonical(result)) << context;
  }
}

// Results as written, or the failure message, for the rules of infinity, zero and sign.
TEST(QQTest, InfinityZeroAndSignRules) {
  const QQ doubled("--5");  // kept as read: isPositive false, ganze -5; counts as 5
  // clang-format off
  const std::tuple<QQ, Op, QQ, const char*> cases[] = {
      {inf, Op::kAdd, q(5), "inf"}, {q(5), Op::kSub, inf, "-inf"}, {q(5), Op::kAdd, minf, "-inf"},
      {inf, Op::kAdd, inf, "inf"}, {inf, Op::kSub, minf, "inf"}, {minf, Op::kSub, inf, "-inf"},
      {q(-5), Op::kSub, minf, "inf"}, {minf, Op::kMul, q(-2), "inf"},
      {q(1, 2), Op::kMul, minf, "-inf"}, {minf, Op::kMul, inf, "-inf"},
      {q(-3), Op::kDiv, q(0), "-inf"}, {q(-7), Op::kDiv, minf, "0"},
      {minf, Op::kDiv, q(-2), "inf"}, {inf, Op::kDiv, q(0), "inf"}, {q(-5), Op::kAdd, q(5), "0"},
      {q(1, 3), Op::kSub, q(1, 2), "-1/6"}, {q(-5), Op::kMul, q(0), "0"},
      {q(-1, 6), Op::kMul, q(-3), "1/2"}, {doubled, Op::kMul, q(10), "50"},
      {q(10), Op::kDiv, doubled, "2"}, {doubled, Op::kAdd, q(1), "6"},
      {q(1), Op::kSub, doubled, messages::kSignInField},
      {inf, Op::kSub, inf, messages::kInfMinusInf}, {inf, Op::kAdd, minf, messages::kInfMinusInf},
      {minf, Op::kAdd, inf, messages::kInfMinusInf}, {minf, Op::kSub, minf, messages::kInfMinusInf},
      {minf, Op::kMul, q(0), messages::kInfTimesZero}, {q(0), Op::kMul, inf, messages::kZeroTimesInf},
      {inf, Op::kDiv, minf, messages::kInfOverInf}, {q(0), Op::kDiv, q(0), messages::kZeroOverZero},
  };
  // clang-format on
  for (const auto& [a, op, b, expected] : cases) {
    QQ r;
    EXPECT_EQ(outcome([&, op = op, a = a, b = b] { return toString(apply(op, r, a, b)); }),
              expected)
        << toString(a) << " op " << static_cast<int>(op) << " " << toString(b);
  }
  EXPECT_EQ(toString(-q(0)), "0");
  EXPECT_TRUE((-q(0)).isPositive);
  EXPECT_EQ(toString(-minf), "inf");
  QQ x = q(7, 2);
  EXPECT_EQ(toString(x--), "3:1/2");
  EXPECT_EQ(toString(x), "2:1/2");
  EXPECT_EQ(toString(signedGanze(q(-7, 2))) + toString(signedZaehler(q(-7, 2))), "-3-1");
}

TEST(QQDeathTest, AnUndefinedOperationIsTheFailureReport) {
  QQ r;
  EXPECT_EXIT(sub(r, inf, inf), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: INF - INF is not defined\n$");
}

// With the throwing handler every reported failure unwinds, the result aliased to an operand,
// and leaves all objects usable and destructible (AddressSanitizer and LeakSanitizer watch).
TEST(QQTest, EveryReportedFailureUnwindsCleanly) {
  using Step = std::function<void(QQ & a, QQ & b)>;
  // clang-format off
  const std::pair<const char*, Step> cases[] = {
      {messages::kSignInField, [](QQ& a, QQ&) { negate(a.nenner), normalize(a); }},
      {messages::kSameAddress, [](QQ& a, QQ& b) { commonDenominator(a.zaehler, a.zaehler, b.nenner, a, b); }},
      {messages::kInfinityInCommonDenominator,
       [](QQ& a, QQ& b) { commonDenominator(a.zaehler, b.zaehler, a.nenner, a, b = inf); }},
      {messages::kInfMinusInf, [](QQ& a, QQ&) { a = inf, sub(a, a, a); }},
      {messages::kInfTimesZero, [](QQ& a, QQ& b) { b = inf, mul(b, b, a = q(0)); }},
      {messages::kZeroTimesInf, [](QQ& a, QQ& b) { a = q(0), mul(a, a, b = minf); }},
      {messages::kInfOverInf, [](QQ& a, QQ&) { a = inf, div(a, a, a); }},
      {messages::kZeroOverZero, [](QQ& a, QQ&) { a = q(0), div(a, a, a); }},
      {messages::kParseError1, [](QQ& a, QQ&) { a = QQ("1.1.1.0"); }},
      {messages::kParseError2, [](QQ& a, QQ&) { a = QQ("1.ix"); }},
      {messages::kParseError3, [](QQ& a, QQ&) { a = QQ("1e1.inx"); }},
      {messages::kDivisionByZero1, [](QQ& a, QQ&) { a = QQ("1:1.2/0"); }},
      {messages::kMalformedNumber1, [](QQ& a, QQ&) { a = QQ("1.2:1:05"); }},
      {messages::kMalformedNumber2, [](QQ& a, QQ&) { a = QQ("1.2:1:1"); }},
      {messages::kExponentOutOfRange, [](QQ& a, QQ&) { a = QQ("1.5e2e1e1"); }},
      {messages::kZerothRoot, [](QQ& a, QQ&) { a = root(a, ZZ(0L)); }},
      {messages::kComplexRoot, [](QQ& a, QQ&) { a = root(-a, ZZ(4L)); }},
      {messages::kDivisionByZero, [](QQ& a, QQ&) { a = root(a = q(0), ZZ(-3L)); }},
      {messages::kLog2MinusInf, [](QQ& a, QQ&) { a = log2(a = minf); }},
      {messages::kLog2NotPositive, [](QQ& a, QQ&) { a = log(-a); }},
      {messages::kLogMinusInf, [](QQ& a, QQ&) { a = log(a = minf); }},
  };
  // clang-format on
  for (const auto& [message, step] : cases) {
    QQ a = q(7, 3);
    QQ b = q(-1, 6);
    EXPECT_EQ(outcome([&, step = step] { return step(a, b), std::string("no failure"); }), message);
    EXPECT_FALSE(toString(a).empty() || toString(b).empty());
    a = q(1, 2);
    b = a * (a + b.ganze);
    std::istringstream in("1 x");
    EXPECT_EQ(outcome([&] { return in >> a, in >> a, toString(a); }), messages::kParseError1);
  }
}

TEST(QQTest, NormalizeAndCommonDenominator) {
  QQ x;
  x.isPositive = false;
  x.ganze = ZZ(2L);
  x.zaehler = ZZ(14L);
  x.nenner = ZZ(4L);
  EXPECT_EQ(toString(normalize(x)), "-5:1/2");
  x.ganze = x.zaehler = ZZ(0L);
  EXPECT_TRUE(normalize(x).isPositive);
  ZZ az, bz, common;
  commonDenominator(az, bz, common, q(-9, 4), q(5, 6));  // fractions only
  EXPECT_EQ(toString(az) + " " + toString(bz) + " " + toString(common), "3 10 12");
  QQ a(2, 9), b(1, 6);
  commonDenominator(a.zaehler, b.zaehler, a.nenner, a, b);  // outputs inside the inputs
  EXPECT_EQ(toString(a.zaehler) + " " + toString(b.zaehler) + " " + toString(a.nenner), "4 3 18");
}

TEST(QQTest, LimitDigitsAndShortenedProducts) {
  // clang-format off
  const std::tuple<const char*, long, bool, const char*> cases[] = {
      {"1/3", 18, true, "1/3"}, {"1234567/98765432", 5, false, "1234/98765"},
      {"7/123456789", 4, true, "7/123400000"}, {"3/500000", 3, true, "0"},
      {"7/123456789", 4, false, "0"},
  };
  // clang-format on
  for (const auto& [text, digits, keepLeading, expected] : cases) {
    QQ x(text);
    limitDigits(x, digits, keepLeading);
    EXPECT_EQ(toString(x), expected) << text;
  }
  const QQ a(ZZ("100000000000"), ZZ("99999999999"));
  shortenProducts = true;
  const QQ shortened = a * a;
  const QQ small = q(7, 3) * q(-5, 4);
  shortenProducts = false;
  // 1/(99999999999^2) keeps its leading digit over the denominator cut by four digits.
  EXPECT_EQ(toString(shortened), toString(QQ(1) + QQ(ZZ(2L), ZZ("99999999999")) +
                                          QQ(ZZ(1L), ZZ("9999999999800000000000"))));
  EXPECT_EQ(toString(small), "-2:11/12");
}

}  // namespace
}  // namespace lpconv
