#include <lpconv/numbers/zz.h>

#include <gtest/gtest.h>

#include <climits>
#include <sstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

// Builds a ZZ from decimal text without going through the base-0 reader under test.
ZZ decimal(const char* text) {
  ZZ z;
  mpz_set_str(z.value, text, 10);
  return z;
}

struct TextCase {
  const char* text;
  const char* decimalValue;
};

TEST(ZZTextTest, ReadsWithBaseZeroRules) {
  const TextCase cases[] = {
      {"0", "0"},
      {"42", "42"},
      {"-42", "-42"},
      {"010", "8"},
      {"0x10", "16"},
      {"0X1f", "31"},
      {"0b11", "3"},
      {"0B101", "5"},
      {"-0x10", "-16"},
      {"  17", "17"},
      {"-0", "0"},
      {"007", "7"},
      {"0x", "0"},  // GMP reads a bare prefix as 0
      {"123456789012345678901234567890", "123456789012345678901234567890"},
  };
  for (const TextCase& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EQ(toString(ZZ(c.text)), c.decimalValue);
    EXPECT_EQ(toString(ZZ(std::string(c.text))), c.decimalValue);
  }
}

TEST(ZZTextTest, RejectedTextThrowsMpzSetStr) {
  for (const char* text : {"12a", "", "-", "+5", "08", "0b2", "1-2", "--1", "0x1g"}) {
    SCOPED_TRACE(text);
    try {
      ZZ z(text);
      ADD_FAILURE() << "no exception, value " << z;
    } catch (const std::invalid_argument& e) {
      EXPECT_STREQ(e.what(), "mpz_set_str");
    }
  }
}

TEST(ZZTest, IntegerConstructors) {
  EXPECT_EQ(toString(ZZ()), "0");
  EXPECT_EQ(toString(ZZ(-5)), "-5");
  EXPECT_EQ(toString(ZZ(LONG_MIN)), "-9223372036854775808");
  EXPECT_EQ(toString(ZZ(LONG_MAX)), "9223372036854775807");
  EXPECT_EQ(toString(ZZ(ULONG_MAX)), "18446744073709551615");
  EXPECT_EQ(toString(ZZ(INT_MIN)), "-2147483648");
}

TEST(ZZTest, CopyAndMoveKeepValuesApart) {
  ZZ a = decimal("123456789012345678901234567890");
  ZZ copy(a);
  ++copy;
  EXPECT_EQ(toString(a), "123456789012345678901234567890");
  ZZ moved(std::move(copy));
  EXPECT_EQ(toString(moved), "123456789012345678901234567891");
  ZZ target(5L);
  target = std::move(moved);
  EXPECT_EQ(toString(target), "123456789012345678901234567891");
  target = a;
  EXPECT_EQ(toString(target), "123456789012345678901234567890");
  target = target;  // self-assignment keeps the value
  EXPECT_EQ(toString(target), "123456789012345678901234567890");
}

TEST(ZZTest, SharedConstantsAreCopies) {
  ZZ z = ZZ::zero();
  ZZ o = ZZ::one();
  ++z;
  ++o;
  EXPECT_EQ(toString(ZZ::zero()), "0");
  EXPECT_EQ(toString(ZZ::one()), "1");
}

struct DivisionCase {
  long a, b, quotient, modulo, divModQ, divModR;
};

TEST(ZZArithmeticTest, FloorDivisionAndNonNegativeRemainder) {
  const DivisionCase cases[] = {
      {-7, 2, -4, 1, -4, 1}, {7, -2, -4, 1, -4, -1}, {7, 2, 3, 1, 3, 1}, {-7, -2, 3, 1, 3, -1},
      {6, 3, 2, 0, 2, 0},    {-6, 3, -2, 0, -2, 0},  {0, 5, 0, 0, 0, 0}, {1, -5, -1, 1, -1, -4},
  };
  for (const DivisionCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.a << " and " << c.b);
    EXPECT_EQ(ZZ(c.a) / ZZ(c.b), ZZ(c.quotient));
    EXPECT_EQ(ZZ(c.a) % ZZ(c.b), ZZ(c.modulo));
    ZZ x(c.a);
    x /= ZZ(c.b);
    EXPECT_EQ(x, ZZ(c.quotient));
    ZZ y(c.a);
    y %= ZZ(c.b);
    EXPECT_EQ(y, ZZ(c.modulo));
    ZZ q;
    ZZ r;
    divMod(ZZ(c.a), ZZ(c.b), q, r);
    EXPECT_EQ(q, ZZ(c.divModQ));
    EXPECT_EQ(r, ZZ(c.divModR));
  }
}

TEST(ZZArithmeticTest, DivModResultsMayBeTheOperands) {
  ZZ a(-7L);
  ZZ b(2L);
  divMod(a, b, a, b);
  EXPECT_EQ(a, ZZ(-4));
  EXPECT_EQ(b, ZZ(1));
}

struct OrderCase {
  const char* a;
  const char* b;
  int sign;
};

TEST(ZZCompareTest, RelationalOperators) {
  const OrderCase cases[] = {
      {"1", "2", -1},
      {"2", "1", 1},
      {"-3", "-3", 0},
      {"-3", "2", -1},
      {"0", "-1", 1},
      {"18446744073709551616", "18446744073709551615", 1},
      {"-18446744073709551616", "5", -1},
  };
  for (const OrderCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.a << " vs " << c.b);
    const ZZ a = decimal(c.a);
    const ZZ b = decimal(c.b);
    EXPECT_EQ((cmp(a, b) > 0) - (cmp(a, b) < 0), c.sign);
    EXPECT_EQ(a == b, c.sign == 0);
    EXPECT_EQ(a != b, c.sign != 0);
    EXPECT_EQ(a < b, c.sign < 0);
    EXPECT_EQ(a > b, c.sign > 0);
    EXPECT_EQ(a <= b, c.sign <= 0);
    EXPECT_EQ(a >= b, c.sign >= 0);
  }
}

TEST(ZZArithmeticTest, SumsAndDifferencesMayOverwriteAnOperand) {
  ZZ a(7L);
  ZZ b(-10L);
  add(a, b, a);
  EXPECT_EQ(a, ZZ(-3));
  sub(a, b, b);
  EXPECT_EQ(b, ZZ(7));
  EXPECT_EQ(ZZ(7) + ZZ(-10), ZZ(-3));
  EXPECT_EQ(ZZ(7) - ZZ(-10), ZZ(17));
  EXPECT_EQ(ZZ(-7) * ZZ(6), ZZ(-42));
  ZZ c(5L);
  c += ZZ(1L);
  c -= ZZ(10L);
  c *= ZZ(-2L);
  EXPECT_EQ(c, ZZ(8));
}

TEST(ZZArithmeticTest, IncrementsAndUnaryMinus) {
  ZZ a(-1L);
  EXPECT_EQ(++a, ZZ(0));
  const ZZ old = a++;
  EXPECT_EQ(old, ZZ(0));
  EXPECT_EQ(a, ZZ(1));
  EXPECT_EQ(-a, ZZ(-1));
  EXPECT_EQ(a, ZZ(1));
  EXPECT_EQ(-ZZ(-3L), ZZ(3));
  EXPECT_EQ(-ZZ(0L), ZZ(0));
}

TEST(ZZFunctionTest, PowerUsesTheLowestLimbOfTheExponentMagnitude) {
  EXPECT_EQ(pow(ZZ(2), ZZ(-3)), ZZ(8));
  EXPECT_EQ(pow(ZZ(5), ZZ(0)), ZZ(1));
  EXPECT_EQ(pow(ZZ(-3), ZZ(3)), ZZ(-27));
  EXPECT_EQ(pow(ZZ(0), ZZ(0)), ZZ(1));
  // 2^64 + 3 has the lowest limb 3.
  EXPECT_EQ(pow(ZZ(2), decimal("18446744073709551619")), ZZ(8));
  ZZ base(10L);
  pow(base, ZZ(20), base);
  EXPECT_EQ(toString(base), "100000000000000000000");
}

TEST(ZZFunctionTest, SquareRoots) {
  EXPECT_EQ(sqrt(ZZ(17)), ZZ(4));
  EXPECT_EQ(sqrt(ZZ(16)), ZZ(4));
  EXPECT_EQ(sqrt(ZZ(0)), ZZ(0));
  ZZ root;
  ZZ rest;
  sqrtRem(ZZ(17), root, rest);
  EXPECT_EQ(root, ZZ(4));
  EXPECT_EQ(rest, ZZ(1));
  ZZ big = decimal("1000000000000000000000000000001");  // 10^30 + 1
  sqrtRem(big, root, big);
  EXPECT_EQ(toString(root), "1000000000000000");
  EXPECT_EQ(big, ZZ(1));
}

struct GcdCase {
  const char* a;
  const char* b;
  const char* gcd;
};

TEST(ZZFunctionTest, GcdOfMagnitudes) {
  const GcdCase cases[] = {
      {"-12", "18", "6"},
      {"0", "5", "5"},
      {"0", "0", "0"},
      {"5", "0", "5"},
      {"-7", "-21", "7"},
      {"17", "13", "1"},
      {"-9", "0", "9"},
      {"340282366920938463463374607431768211456", "18446744073709551616", "18446744073709551616"},
  };
  for (const GcdCase& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.a << ", " << c.b);
    EXPECT_EQ(toString(gcd(decimal(c.a), decimal(c.b))), c.gcd);
  }
  testing::RandomNumbers random(12);
  for (int i = 0; i < 500; ++i) {
    ZZ a = random.magnitude();
    ZZ b = random.magnitude();
    if (random.below(2) == 0) negate(a);
    mpz_t expected;
    mpz_init(expected);
    mpz_gcd(expected, a.value, b.value);
    EXPECT_EQ(mpz_cmp(gcd(a, b).value, expected), 0);
    mpz_clear(expected);
  }
}

TEST(ZZFunctionTest, SignOperations) {
  EXPECT_TRUE(isNonNegative(ZZ(0)));
  EXPECT_TRUE(isNonNegative(ZZ(3)));
  EXPECT_FALSE(isNonNegative(ZZ(-3)));
  ZZ a(-4L);
  EXPECT_EQ(negate(a), ZZ(4));
  EXPECT_EQ(abs(a), ZZ(4));
  negate(a);
  EXPECT_EQ(abs(a), ZZ(4));
}

struct DigitCase {
  const char* value;
  long digits;
  long significant;
  long trailingZeros;
};

TEST(ZZDigitTest, CountsDecimalDigits) {
  const DigitCase cases[] = {
      {"0", 1, 1, 0},
      {"-120", 3, 2, 1},
      {"1200", 4, 2, 2},
      {"9", 1, 1, 0},
      {"10", 2, 1, 1},
      {"-1000", 4, 1, 3},
      {"101", 3, 3, 0},
      {"9999999999999999999", 19, 19, 0},
      {"10000000000000000000", 20, 1, 19},
      {"18446744073709551616", 20, 20, 0},  // 2^64, two limbs
      {"99999999999999999999999999999999999999990", 41, 40, 1},
      {"-100000000000000000000000000000000000000000", 42, 1, 41},
  };
  for (const DigitCase& c : cases) {
    SCOPED_TRACE(c.value);
    const ZZ z = decimal(c.value);
    EXPECT_EQ(digitCount(z), c.digits);
    long trailing = -1;
    EXPECT_EQ(significantDigits(z, &trailing), c.significant);
    EXPECT_EQ(trailing, c.trailingZeros);
    EXPECT_EQ(significantDigits(z), c.significant);
  }
}

struct DigitEditCase {
  const char* value;
  long n;
  const char* result;
};

TEST(ZZDigitTest, StripTrailingZeros) {
  const DigitEditCase cases[] = {
      {"-1200", 0, "-12"},
      {"0", 0, "0"},
      {"7", 0, "7"},
      {"1000000000000000000000000000000", 0, "1"},
      {"-50505000", 0, "-50505"},
  };
  for (const DigitEditCase& c : cases) {
    ZZ z = decimal(c.value);
    EXPECT_EQ(toString(stripTrailingZeros(z)), c.result) << c.value;
  }
}

TEST(ZZDigitTest, DropLastDigitsLosesTheSign) {
  const DigitEditCase cases[] = {
      {"-12345", 2, "123"}, {"99", 2, "0"},        {"99", 5, "0"},
      {"0", 3, "0"},        {"12345", 0, "12345"}, {"-5", 0, "5"},
      {"100", 2, "1"},      {"-100", 3, "0"},      {"123456789012345678901234567890", 25, "12345"},
  };
  for (const DigitEditCase& c : cases) {
    ZZ z = decimal(c.value);
    EXPECT_EQ(toString(dropLastDigits(z, c.n)), c.result) << c.value << " drop " << c.n;
  }
}

TEST(ZZDigitTest, AppendZeros) {
  const DigitEditCase cases[] = {
      {"-12", 3, "-12000"},
      {"0", 4, "0"},
      {"7", 0, "7"},
      {"5", 25, "50000000000000000000000000"},
  };
  for (const DigitEditCase& c : cases) {
    ZZ z = decimal(c.value);
    EXPECT_EQ(toString(appendZeros(z, c.n)), c.result) << c.value << " append " << c.n;
  }
}

TEST(ZZStreamTest, WritesExactlyTheDecimalText) {
  std::ostringstream out;
  out << ZZ(-5) << "|" << ZZ(5) << "|" << decimal("-340282366920938463463374607431768211456");
  EXPECT_EQ(out.str(), "-5|5|-340282366920938463463374607431768211456");
}

TEST(ZZStreamTest, AppendTextMatchesGmpForAllSizes) {
  testing::RandomNumbers random(13);
  for (int i = 0; i < 500; ++i) {
    ZZ z = random.magnitude();
    if (random.below(2) == 0) negate(z);
    std::string out = "x";
    appendText(out, z);
    char* expected = mpz_get_str(nullptr, 10, z.value);
    EXPECT_EQ(out, std::string("x") + expected);
    void (*release)(void*, std::size_t);
    mp_get_memory_functions(nullptr, nullptr, &release);
    release(expected, std::strlen(expected) + 1);
  }
}

TEST(ZZStreamTest, ReadsOneWordWithBaseZero) {
  std::istringstream in("  0x1F rest");
  ZZ z;
  in >> z;
  EXPECT_EQ(z, ZZ(31));
  std::string rest;
  in >> rest;
  EXPECT_EQ(rest, "rest");
}

TEST(ZZStreamTest, UnreadableOrMissingWordThrows) {
  for (const char* input : {"abc", "", "   "}) {
    std::istringstream in(input);
    ZZ z(9L);
    EXPECT_THROW(in >> z, std::invalid_argument) << '"' << input << '"';
    EXPECT_EQ(z, ZZ(9)) << "a rejected word leaves the value";
  }
}

}  // namespace
}  // namespace lpconv
