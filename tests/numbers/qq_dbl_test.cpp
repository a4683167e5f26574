#include <gtest/gtest.h>
#include <lpconv/numbers/precision_exceptions.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/full_precision.h>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <sstream>
#include <string>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::outcome;
constexpr dbl_t kInf = std::numeric_limits<dbl_t>::infinity();

// The literal route: the stream text with full precision, read by the parser.
std::string throughStream(dbl_t value) {
  std::ostringstream out;
  setFullPrecision(out);
  out << value;
  return outcome([&] { return toString(QQ(out.str())); });
}

// The exact value of a finite long double.
QQ exactValue(dbl_t value) {
  int exponent = 0;
  const auto mantissa =
      static_cast<unsigned long>(std::ldexp(std::frexp(std::fabs(value), &exponent), 64));
  ZZ numerator(mantissa), denominator(1ul);
  mpz_mul_2exp((exponent >= 64 ? numerator : denominator).value,
               (exponent >= 64 ? numerator : denominator).value,
               static_cast<unsigned long>(std::abs(exponent - 64)));
  return QQ(value < 0 ? -numerator : numerator, denominator);
}

// Listed values, extremes, ties at the 17th digit, and random doubles and long doubles of every
// exponent: fromDbl gives exactly the literal route's value, fields included, or its throw.
TEST(QQDblTest, FromDblAgreesWithTheStreamText) {
  // clang-format off
  const std::pair<dbl_t, const char*> listed[] = {
      {0.1, "10000000000000001/100000000000000000"}, {0.1L, "1/10"}, {-1e-5L, "-1/100000"},
      {123456789012345678.0L, "123456789012345680"}, {1000000000000000.25, "1000000000000000:1/5"},
      {-0.0L, "0"}, {kInf, "inf"}, {-kInf, "-inf"},
      {std::numeric_limits<dbl_t>::quiet_NaN(), "mpz_set_str"}, {DBL_TRUE_MIN, nullptr},
      {LDBL_MAX, nullptr}, {LDBL_TRUE_MIN, nullptr}, {-9223372036854775808.0L, nullptr}
  };
  // clang-format on
  for (const auto& [value, expected] : listed) {
    const std::string got = outcome([value = value] { return toString(fromDbl(value)); });
    if (expected != nullptr) {
      EXPECT_EQ(got, expected);
    }
    EXPECT_EQ(got, throughStream(value)) << std::hexfloat << value;
  }
  testing::RandomNumbers random(301);
  for (int i = 0; i < 20000; ++i) {
    dbl_t value;
    if (i % 3 == 0) {
      double d;
      const std::uint64_t bits = random.engine()();
      std::memcpy(&d, &bits, sizeof d);
      value = std::isfinite(d) ? d : 0.5;
    } else if (i % 3 == 1) {
      value = static_cast<dbl_t>(10000000000000000 + random.below(90000000000000000)) + 0.5L;
    } else {
      value = std::ldexp(static_cast<dbl_t>(random.engine()()),
                         static_cast<int>(random.below(32700)) - 16508);
    }
    const QQ x = fromDbl(value);
    ASSERT_EQ(toString(x), throughStream(value)) << std::hexfloat << value;
    ASSERT_TRUE(testing::isCanonical(x));
    if (value != 0) {
      ASSERT_EQ(toDbl(exactValue(value)), value) << std::hexfloat << value;
    }
  }
}

TEST(QQDblTest, ToDblIsTheNearestWithTiesToEven) {
  testing::RandomNumbers random(304);
  for (int i = 0; i < 3000; ++i) {
    const QQ x = random.finite();
    const dbl_t r = toDbl(x);
    const QQ distance = x - exactValue(r);
    for (const dbl_t neighbour : {std::nextafter(r, kInf), std::nextafter(r, -kInf)}) {
      const QQ other = x - exactValue(neighbour);
      ASSERT_LE(
          compare(distance.isPositive ? distance : -distance, other.isPositive ? other : -other), 0)
          << toString(x);
    }
  }
  ZZ p64, huge, tiny;
  mpz_setbit(p64.value, 64);
  mpz_setbit(huge.value, 16384);
  mpz_setbit(tiny.value, 16446);  // half the smallest subnormal
  EXPECT_EQ(toDbl(QQ(1) + QQ(ZZ(1L), p64)), 1.0L);
  EXPECT_EQ(toDbl(-QQ(1) - QQ(ZZ(3L), p64)), -1.0L - std::ldexp(1.0L, -62));
  EXPECT_EQ(toDbl(-QQ(huge)), -kInf);
  EXPECT_EQ(toDbl(QQ(ZZ(1L), tiny)), 0.0L);
  EXPECT_EQ(toDbl(QQ(ZZ(3L), tiny * ZZ(2L))), std::numeric_limits<dbl_t>::denorm_min());
}

// toDbl(x, exact, allowCut): the value, or the what() of the precision exception it throws.
TEST(QQDblTest, ExactConversionChecksTheDigitBudget) {
  const auto convert = [](const char* text, bool allowCut) -> std::string {
    try {
      std::ostringstream out;
      setFullPrecision(out) << toDbl(QQ(text), true, allowCut);
      return out.str();
    } catch (const PrecisionException& e) {
      return e.what();
    }
  };
  // clang-format off
  const std::tuple<const char*, bool, const char*> cases[] = {
      {"123456789012345678", false, "1.2345678901234568e+17"},
      {"-0.12345678901234567", false, "-0.12345678901234567"},
      {"1234567890123456789", true,
       "PreCommaPrecision exception: The QQ integer-part is not exactly representable as dbl_t"},
      {"-1/7", false, "PostCommaPrecision exception: QQ is not representable as dbl_t"},
      {"1/3", true, "0.33333333333333333"},
      {"123456789012345678.5", true, "1.2345678901234568e+17"}
  };
  // clang-format on
  for (const auto& [text, allowCut, expected] : cases)
    EXPECT_EQ(convert(text, allowCut), expected) << text;
  EXPECT_NE(toDbl(QQ(1, 3), true, true), toDbl(QQ(1, 3)));
  EXPECT_STREQ(PrecisionException("").what(), "Precision exception");
  EXPECT_STREQ(PreCommaPrecisionException("").what(), "PreCommaPrecision exception");
  // The family is caught as GeneralException, not as std::exception.
  EXPECT_THROW(
      try { throw PostCommaPrecisionException("y"); } catch (const std::exception&){},
      GeneralException);
}

}  // namespace
}  // namespace lpconv
