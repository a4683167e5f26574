#include <gtest/gtest.h>
#include <lpconv/numbers/zz.h>

#include <sstream>
#include <string>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::outcome;

TEST(ZZTest, TextWithBaseZeroRules) {
  // clang-format off
  const std::pair<const char*, const char*> cases[] = {
      {"-42", "-42"}, {"010", "8"}, {"0X1f", "31"}, {"0B101", "5"}, {"-0x10", "-16"},
      {"  17", "17"}, {"-0", "0"}, {"0x", "0"}, {"1 2", "12"},
      {"123456789012345678901234567890", "123456789012345678901234567890"},
      {"12a", "mpz_set_str"}, {"", "mpz_set_str"}, {"-", "mpz_set_str"}, {"+5", "mpz_set_str"},
      {"08", "mpz_set_str"}, {"--1", "mpz_set_str"},
  };
  // clang-format on
  for (const auto& [text, expected] : cases) {
    EXPECT_EQ(outcome([text = text] { return toString(ZZ(text)); }), expected) << text;
  }
  // The stream reads one word; a rejected word leaves the value as it was.
  std::istringstream in(" 0x1f 12a");
  ZZ z;
  in >> z;
  EXPECT_EQ(outcome([&] { return toString((in >> z, z)); }), "mpz_set_str");
  EXPECT_EQ(z, ZZ(31L));
}

// Every operation against GMP, with results written over operands where the contract allows.
TEST(ZZTest, AgreesWithGmpUnderAliasing) {
  testing::RandomNumbers random(7);
  mpz_t e, f;
  mpz_inits(e, f, nullptr);
  for (int i = 0; i < 3000; ++i) {
    ZZ a = random.magnitude();
    ZZ b = random.magnitude();
    if (random.below(2) == 0) negate(a);
    if (random.below(2) == 0) negate(b);
    const bool alias = random.below(2) == 0;
    ZZ r = alias ? a : ZZ();
    mpz_add(e, a.value, b.value);
    ASSERT_EQ(mpz_cmp(add(alias ? r : a, b, r).value, e), 0);
    mpz_sub(e, a.value, b.value);
    ASSERT_EQ(mpz_cmp((a - b).value, e), 0);
    ZZ c = b;
    ASSERT_EQ(mpz_cmp(sub(a, c, c).value, e), 0);
    mpz_mul(e, a.value, b.value);
    ASSERT_EQ(mpz_cmp((a * b).value, e), 0);
    ASSERT_EQ(cmp(a, b), mpz_cmp(a.value, b.value));
    mpz_gcd(e, a.value, b.value);
    ASSERT_EQ(mpz_cmp(gcd(a, b).value, e), 0);
    if (b.isZero()) continue;
    mpz_fdiv_qr(e, f, a.value, b.value);
    ASSERT_EQ(mpz_cmp((a / b).value, e), 0);
    ZZ q = a;
    ZZ m = b;
    divMod(q, m, q, m);  // both results over the operands
    ASSERT_EQ(mpz_cmp(q.value, e), 0);
    ASSERT_EQ(mpz_cmp(m.value, f), 0);
    mpz_mod(e, a.value, b.value);  // never negative
    ASSERT_EQ(mpz_cmp((a % b).value, e), 0);
    abs(a);
    mpz_sqrtrem(e, f, a.value);
    sqrtRem(a, q, a);  // the remainder over the operand
    ASSERT_EQ(mpz_cmp(q.value, e), 0);
    ASSERT_EQ(mpz_cmp(a.value, f), 0);
  }
  mpz_clears(e, f, nullptr);
}

TEST(ZZTest, RelationalOperatorsNarrowTheComparison) {
  const ZZ one(1L);
  const ZZ big = pow(ZZ(2L), ZZ(64L * 40000));  // 40,001 limbs: mpz_cmp gives 40,000 apart
  EXPECT_LT(one, ZZ(2L));
  EXPECT_TRUE(one >= one && one <= one && one == one && !(one != one));
  // The difference in size, 40,000, is negative as a 16-bit integer.
  EXPECT_EQ(big > one, static_cast<std::int16_t>(cmp(big, one)) > 0);
  EXPECT_EQ(pow(ZZ(2L), ZZ(-3L)), ZZ(8L));  // the exponent's magnitude
}

TEST(ZZTest, DecimalDigits) {
  // clang-format off
  const std::tuple<const char*, long, long, const char*, const char*> cases[] = {
      // value, digits, significant digits, stripped of trailing zeros, last 2 digits dropped
      {"0", 1, 1, "0", "0"}, {"-120", 3, 2, "-12", "1"}, {"10", 2, 1, "1", "0"},
      {"18446744073709551616", 20, 20, "18446744073709551616", "184467440737095516"},
      {"-100000000000000000000000000000000000000000", 42, 1, "-1",
       "1000000000000000000000000000000000000000"},
  };
  // clang-format on
  for (const auto& [text, digits, significant, stripped, dropped] : cases) {
    ZZ z(text);
    long trailing = -1;
    EXPECT_EQ(digitCount(z), digits) << text;
    EXPECT_EQ(significantDigits(z, &trailing), significant) << text;
    EXPECT_EQ(trailing, digits - significant) << text;
    ZZ s(z);
    EXPECT_EQ(toString(stripTrailingZeros(s)), stripped) << text;
    EXPECT_EQ(toString(dropLastDigits(z, 2)), dropped) << text;
    EXPECT_EQ(toString(appendZeros(s, digits - significant)), toString(ZZ(text))) << text;
  }
}

}  // namespace
}  // namespace lpconv
