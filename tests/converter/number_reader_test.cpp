#include <lpconv/converter/number_reader.h>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/util/full_precision.h>

namespace lpconv {
namespace {

// The route the converter's numbers are defined by: decimal string-to-double, widened to dbl_t,
// written with 17 significant digits, read back by the QQ text parser.
QQ literalRoute(double value) {
  std::ostringstream text;
  setFullPrecision(text) << static_cast<dbl_t>(value);
  return QQ(text.str());
}

bool identical(const QQ& a, const QQ& b) {
  return a.isInf == b.isInf && a.isPositive == b.isPositive &&
         mpz_cmp(a.ganze.value, b.ganze.value) == 0 &&
         mpz_cmp(a.zaehler.value, b.zaehler.value) == 0 &&
         mpz_cmp(a.nenner.value, b.nenner.value) == 0;
}

// Numerals as they stand in LP lines: integers of every length around the fast path's limit,
// short and long decimals, exponents, leading zeros, and what follows a number in a line.
std::string randomNumeral(std::mt19937_64& engine) {
  std::uniform_int_distribution<int> pick(0, 99);
  const auto digits = [&](int count) {
    std::string s;
    for (int i = 0; i < count; ++i) s += static_cast<char>('0' + pick(engine) % 10);
    return s;
  };
  std::string text;
  const int form = pick(engine);
  if (form < 50) {
    text = digits(1 + pick(engine) % 18);
  } else if (form < 75) {
    text = digits(pick(engine) % 6) + "." + digits(pick(engine) % 8);
  } else if (form < 85) {
    text = digits(1 + pick(engine) % 4) + (pick(engine) % 2 ? "e" : "E") +
           (pick(engine) % 3 == 0 ? "-" : pick(engine) % 2 ? "+" : "") + digits(pick(engine) % 4);
  } else if (form < 90) {
    text = "0" + digits(pick(engine) % 5) + "." + digits(1 + pick(engine) % 20);
  } else {
    text = digits(pick(engine) % 25);
  }
  static const std::vector<std::string> followers = {"", "x1", " x12", "+x3", "-", "<=4", "\r",
                                                     ":", ".", "e", "x"};
  return text + followers[static_cast<std::size_t>(pick(engine)) % followers.size()];
}

TEST(NumberReaderTest, FastPathEqualsTheLiteralRouteOnAMillionNumerals) {
  std::mt19937_64 engine(20261122);
  for (int i = 0; i < 1000000; ++i) {
    const std::string text = randomNumeral(engine);
    const QQ fast = readCoefficient(text.c_str()).toQQ();
    const QQ slow = literalRoute(readDecimal(text.c_str()));
    ASSERT_TRUE(identical(fast, slow)) << '"' << text << "\": " << fast << " vs " << slow;
  }
}

TEST(NumberReaderTest, DecimalFormsOnly) {
  struct Case {
    const char* text;
    double value;
  };
  const std::vector<Case> cases = {
      {"0x3", 0.0},     {"0X1p4", 0.0},   {"-0x10", -0.0}, {"+0x1", 0.0},  {"  0x3", 0.0},
      {"00x3", 0.0},    {"12", 12.0},     {" 2.5x", 2.5},  {"1e3", 1e3},   {"2e", 2.0},
      {".5", 0.5},      {"-.5", -0.5},    {"x1", 0.0},     {"", 0.0},      {"+", 0.0},
      {"1e999", HUGE_VAL}, {"-inf", -HUGE_VAL}, {"Infinity", HUGE_VAL},
  };
  for (const Case& c : cases) {
    const double got = readDecimal(c.text);
    EXPECT_EQ(got, c.value) << c.text;
    EXPECT_EQ(std::signbit(got), std::signbit(c.value)) << c.text;
  }
  EXPECT_TRUE(std::isnan(readDecimal("nan")));
  EXPECT_TRUE(std::isnan(readDecimal("-NaN(1)")));
}

TEST(NumberReaderTest, ExactValuesOfTypicalCoefficients) {
  const std::vector<std::pair<const char*, const char*>> cases = {
      {"40", "40"},
      {"0.1", "10000000000000001/100000000000000000"},
      {"2.5", "2:1/2"},
      {"007", "7"},
      {"123456789012345", "123456789012345"},
      {"1234567890123456789", "1234567890123456800"},  // 17 significant digits
      {"1e20", "100000000000000000000"},
      {"1e999", "inf"},
      {"0x3", "0"},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(toString(readCoefficient(text)), value) << text;
}

}  // namespace
}  // namespace lpconv
