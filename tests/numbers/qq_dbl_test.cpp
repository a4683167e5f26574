#include <gtest/gtest.h>

#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <lpconv/numbers/precision_exceptions.h>
#include <lpconv/numbers/qq.h>
#include "tests/numbers/test_support.h"
#include <lpconv/util/full_precision.h>

namespace lpconv {
namespace {

// The slow route the conversion must agree with: the stream text, read by the parser.
QQ throughStream(dbl_t value) {
  std::ostringstream out;
  setFullPrecision(out);
  out << value;
  return QQ(out.str());
}

::testing::AssertionResult sameFields(const QQ& a, const QQ& b) {
  if (a.isInf != b.isInf || a.isPositive != b.isPositive || cmp(a.ganze, b.ganze) != 0 ||
      cmp(a.zaehler, b.zaehler) != 0 || cmp(a.nenner, b.nenner) != 0) {
    return ::testing::AssertionFailure() << toString(a) << " != " << toString(b);
  }
  return ::testing::AssertionSuccess();
}

// The exact value of a finite long double.
QQ exactValue(dbl_t value) {
  if (value == 0) return QQ();
  int exponent = 0;
  const dbl_t fraction = std::frexp(std::fabs(value), &exponent);
  const auto mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 64));
  ZZ numerator(static_cast<unsigned long>(mantissa));
  ZZ denominator(1ul);
  exponent -= 64;
  if (exponent >= 0) {
    mpz_mul_2exp(numerator.value, numerator.value, static_cast<unsigned long>(exponent));
  } else {
    mpz_mul_2exp(denominator.value, denominator.value, static_cast<unsigned long>(-exponent));
  }
  if (value < 0) negate(numerator);
  return QQ(numerator, denominator);
}

std::vector<dbl_t> sampleValues(std::uint64_t seed, int count) {
  testing::RandomNumbers random(seed);
  std::vector<dbl_t> values = {0.0L,
                               -0.0L,
                               0.1L,
                               0.1,
                               2.5,
                               3,
                               -3,
                               1e17L,
                               99999999999999999.0L,
                               1e17L - 1,
                               1e16L,
                               123456789012345678.0L,
                               1e-5,
                               1e300,
                               -1e-300,
                               1000000000000000.25,
                               1000000000000000.75,
                               100000000000000005.0L,
                               100000000000000015.0L,
                               DBL_MAX,
                               DBL_MIN,
                               DBL_TRUE_MIN,
                               LDBL_MAX,
                               LDBL_MIN,
                               LDBL_TRUE_MIN,
                               -LDBL_TRUE_MIN,
                               0.5,
                               1.0L / 3,
                               2.0 / 3,
                               9.5e-5,
                               12345.678,
                               static_cast<dbl_t>(std::numeric_limits<long>::max()),
                               -9223372036854775808.0L};
  const char* decimals[] = {"0.3",     "1.7",      "-12.25",       "1e-7",
                            "3.14159", "2.5e10",   "0.000123",     "-987654.321",
                            "7e22",    "1.5e-300", "6.02214076e23"};
  for (const char* d : decimals) {
    values.push_back(std::strtod(d, nullptr));
    values.push_back(std::strtold(d, nullptr));
  }
  for (int k = -40; k <= 40; ++k) {  // powers of ten and their neighbours
    const std::string text = "1e" + std::to_string(k);
    const dbl_t p = std::strtold(text.c_str(), nullptr);
    const double d = std::strtod(text.c_str(), nullptr);
    for (const dbl_t v : {p, std::nextafter(p, 0.0L), std::nextafter(p, 2 * p),
                          static_cast<dbl_t>(d), static_cast<dbl_t>(std::nextafter(d, 0.0))}) {
      values.push_back(v);
    }
  }
  for (int i = 0; i < count; ++i) {
    switch (random.below(6)) {
      case 5: {  // a 17-digit integer plus one half: a tie at the 17th digit
        const auto whole =
            static_cast<std::int64_t>(10000000000000000 + random.below(90000000000000000));
        values.push_back(static_cast<dbl_t>(whole) + 0.5L);
        break;
      }
      case 0: {  // any double
        std::uint64_t bits = random.engine()();
        double d;
        std::memcpy(&d, &bits, sizeof d);
        if (std::isfinite(d)) values.push_back(d);
        break;
      }
      case 1: {  // any long double of moderate exponent
        const auto mantissa = static_cast<dbl_t>(random.engine()() | (1ull << 63));
        const int exponent = static_cast<int>(random.below(400)) - 263;
        values.push_back((random.below(2) == 0 ? 1 : -1) * std::ldexp(mantissa, exponent));
        break;
      }
      case 2: {  // whole numbers around the 17-digit boundary
        const auto whole = static_cast<std::int64_t>(random.engine()() >> random.below(64));
        values.push_back(static_cast<dbl_t>(random.below(2) == 0 ? whole : -whole));
        break;
      }
      case 3: {  // short decimals as read from input
        const std::string text = std::to_string(random.below(100000)) + "." +
                                 std::to_string(random.below(1000)) + "e" +
                                 std::to_string(static_cast<int>(random.below(40)) - 20);
        values.push_back(std::strtod(text.c_str(), nullptr));
        break;
      }
      default: {  // any long double, subnormals and extremes included
        const auto mantissa = static_cast<dbl_t>(random.engine()());
        const int exponent = static_cast<int>(random.below(32700)) - 16445 - 63;
        values.push_back(std::ldexp(mantissa, exponent));
        break;
      }
    }
  }
  return values;
}

TEST(QQFromDblTest, ListedValues) {
  EXPECT_EQ(toString(fromDbl(0.1)), "10000000000000001/100000000000000000");
  EXPECT_EQ(toString(fromDbl(2.5)), "2:1/2");
  EXPECT_EQ(toString(fromDbl(3)), "3");
  EXPECT_EQ(toString(fromDbl(-0.0L)), "0");
  EXPECT_TRUE(fromDbl(-0.0L).isPositive);
  EXPECT_EQ(toString(fromDbl(1e-5)), "10000000000000001/1000000000000000000000");
  EXPECT_EQ(toString(fromDbl(-1e-5L)), "-1/100000");
  EXPECT_EQ(toString(fromDbl(0.1L)), "1/10");
  EXPECT_EQ(toString(fromDbl(1e17L)), "100000000000000000");
  EXPECT_EQ(toString(fromDbl(123456789012345678.0L)), "123456789012345680");
  // A tie at the 17th digit goes to the even neighbour.
  EXPECT_EQ(toString(fromDbl(1000000000000000.25)), "1000000000000000:1/5");
  EXPECT_EQ(toString(fromDbl(std::numeric_limits<dbl_t>::infinity())), "inf");
  EXPECT_EQ(toString(fromDbl(-std::numeric_limits<dbl_t>::infinity())), "-inf");
}

TEST(QQFromDblTest, NanThrowsLikeTheParser) {
  for (const dbl_t nan :
       {std::numeric_limits<dbl_t>::quiet_NaN(), -std::numeric_limits<dbl_t>::quiet_NaN()}) {
    try {
      fromDbl(nan);
      ADD_FAILURE() << "no exception";
    } catch (const std::invalid_argument& e) {
      EXPECT_STREQ(e.what(), "mpz_set_str");
    }
    EXPECT_THROW(throughStream(nan), std::invalid_argument);
  }
}

TEST(QQFromDblTest, AgreesWithTheStreamTextRoute) {
  for (const dbl_t value : sampleValues(301, 20000)) {
    ASSERT_TRUE(sameFields(fromDbl(value), throughStream(value)))
        << static_cast<double>(value) << " / " << std::hexfloat << value;
  }
}

TEST(QQFromDblTest, ResultIsCanonical) {
  for (const dbl_t value : sampleValues(302, 1000)) {
    ASSERT_TRUE(testing::isCanonical(fromDbl(value)));
  }
}

TEST(QQToDblTest, ExactBinaryValuesConvertBack) {
  for (const dbl_t value : sampleValues(303, 3000)) {
    if (value == 0) continue;
    const dbl_t back = toDbl(exactValue(value));
    ASSERT_EQ(back, value) << std::hexfloat << value << " gave " << back;
  }
}

TEST(QQToDblTest, ResultIsTheNearestLongDouble) {
  testing::RandomNumbers random(304);
  for (int i = 0; i < 3000; ++i) {
    const QQ x = random.finite();
    const dbl_t r = toDbl(x);
    ASSERT_TRUE(std::isfinite(r)) << toString(x);
    const QQ distance = x - exactValue(r);
    const QQ absDistance = distance.isPositive ? distance : -distance;
    for (const dbl_t neighbour : {std::nextafter(r, std::numeric_limits<dbl_t>::infinity()),
                                  std::nextafter(r, -std::numeric_limits<dbl_t>::infinity())}) {
      const QQ other = x - exactValue(neighbour);
      const QQ absOther = other.isPositive ? other : -other;
      ASSERT_LE(compare(absDistance, absOther), 0) << toString(x);
    }
  }
}

TEST(QQToDblTest, TiesGoToEvenAndRangeEndsSaturate) {
  const QQ one(1);
  ZZ p64;
  mpz_setbit(p64.value, 64);
  // 1 + 2^-64 lies halfway between 1 and 1 + 2^-63: the even neighbour is 1.
  EXPECT_EQ(toDbl(one + QQ(ZZ(1L), p64)), 1.0L);
  // 1 + 3·2^-64 lies halfway between 1 + 2^-63 and 1 + 2^-62: the even one is 1 + 2^-62.
  EXPECT_EQ(toDbl(one + QQ(ZZ(3L), p64)), 1.0L + std::ldexp(1.0L, -62));
  EXPECT_EQ(toDbl(-one - QQ(ZZ(3L), p64)), -1.0L - std::ldexp(1.0L, -62));
  ZZ huge;
  mpz_setbit(huge.value, 16384);
  EXPECT_EQ(toDbl(QQ(huge)), std::numeric_limits<dbl_t>::infinity());
  EXPECT_EQ(toDbl(-QQ(huge)), -std::numeric_limits<dbl_t>::infinity());
  ZZ tiny;
  mpz_setbit(tiny.value, 16446);  // 2^-16446: half the smallest subnormal, even neighbour 0
  EXPECT_EQ(toDbl(QQ(ZZ(1L), tiny)), 0.0L);
  EXPECT_EQ(toDbl(QQ(ZZ(3L), tiny * ZZ(2L))), std::numeric_limits<dbl_t>::denorm_min());
  EXPECT_EQ(toDbl(QQ()), 0.0L);
  EXPECT_EQ(toDbl(QQ::infinity()), std::numeric_limits<dbl_t>::infinity());
  EXPECT_EQ(toDbl(QQ::minusInfinity(), true), -std::numeric_limits<dbl_t>::infinity());
  EXPECT_EQ(toDbl(QQ(1, 3)), 1.0L / 3);
}

TEST(QQToDblTest, ExactConversionChecksTheDigitBudget) {
  EXPECT_EQ(toDbl(QQ("123456789012345678"), true), 123456789012345678.0L);
  EXPECT_EQ(toDbl(QQ(1, 1024), true), 1.0L / 1024);
  EXPECT_EQ(toDbl(QQ("12345678901234567.5"), true), 12345678901234567.5L);
  EXPECT_EQ(toDbl(QQ("0.000000000000000000001"), true), std::strtold("1e-21", nullptr));
  EXPECT_EQ(toDbl(QQ("-0.12345678901234567"), true), std::strtold("-0.12345678901234567", nullptr));
  try {
    toDbl(QQ("1234567890123456789"), true);
    ADD_FAILURE() << "no exception";
  } catch (const PreCommaPrecisionException& e) {
    EXPECT_STREQ(e.what(),
                 "PreCommaPrecision exception: The QQ integer-part is not exactly representable "
                 "as dbl_t");
  }
  for (const char* text : {"1/3", "123456789012345678.5", "12345678901234567.25", "-1/7"}) {
    try {
      toDbl(QQ(text), true);
      ADD_FAILURE() << "no exception for " << text;
    } catch (const PostCommaPrecisionException& e) {
      EXPECT_STREQ(e.what(), "PostCommaPrecision exception: QQ is not representable as dbl_t");
    }
  }
  // Without exactness nothing is checked; the integer part even of a huge value converts.
  EXPECT_EQ(toDbl(QQ("1234567890123456789")), 1234567890123456789.0L);
  EXPECT_NO_THROW(toDbl(QQ(1, 3), false, false));
}

TEST(QQToDblTest, AllowedCutConvertsTheFirstDigits) {
  EXPECT_EQ(toDbl(QQ(1, 3), true, true), std::strtold("0.333333333333333333", nullptr));
  EXPECT_NE(toDbl(QQ(1, 3), true, true), toDbl(QQ(1, 3)));
  EXPECT_EQ(toDbl(QQ(-2, 3), true, true), std::strtold("-0.666666666666666666", nullptr));
  EXPECT_EQ(toDbl(QQ("123456789012345678.5"), true, true), 123456789012345678.0L);
  EXPECT_EQ(toDbl(QQ(ZZ(1L), ZZ("3000000000000000000000")), true, true),
            std::strtold("3.33333333333333333e-22", nullptr));
  EXPECT_THROW(toDbl(QQ("1234567890123456789"), true, true), PreCommaPrecisionException);
}

}  // namespace
}  // namespace lpconv
