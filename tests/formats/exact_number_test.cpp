#include <lpconv/formats/exact_number.h>

#include <gtest/gtest.h>

#include <lpconv/numbers/qq.h>

namespace lpconv {
namespace {

TEST(ExactNumber, ReadsTheValueOfItsText) {
  const struct {
    const char* text;
    const char* value;  // QQ text
  } cases[] = {
      {"0.1", "1/10"},
      {"1e-1", "1/10"},
      {"2.5e-05", "1/40000"},
      {"1/3", "1/3"},
      {"-6/4", "-1:1/2"},
      {"+.5", "1/2"},
      {"5.", "5"},
      {"007", "7"},
      {"-0", "0"},
      {"1E+3", "1000"},
      {"0.000", "0"},
      {"123456789012345678901234567890", "123456789012345678901234567890"},
      {"1e30", "1000000000000000000000000000000"},
      {"-1.25e-20", "-1/80000000000000000000"},
      {"9223372036854775807", "9223372036854775807"},
      {"4611686018427387904", "4611686018427387904"},
  };
  for (const auto& c : cases) {
    Coefficient v;
    ASSERT_EQ(parseExactNumber(c.text, v), NumberError::none) << c.text;
    EXPECT_EQ(toString(v), c.value) << c.text;
  }
}

TEST(ExactNumber, SaysWhyATextIsNoNumber) {
  const struct {
    const char* text;
    NumberError error;
  } cases[] = {
      {"", NumberError::empty},
      {"0x1F", NumberError::hexadecimal},
      {"-0X1p3", NumberError::hexadecimal},
      {"nan", NumberError::notANumber},
      {"-NaN", NumberError::notANumber},
      {"inf", NumberError::infinity},
      {"-Infinity", NumberError::infinity},
      {"1e1000001", NumberError::exponentRange},
      {"1e-99999999999", NumberError::exponentRange},
      {"1/0", NumberError::zeroDenominator},
      {".", NumberError::malformed},
      {"1e", NumberError::malformed},
      {"1.5/2", NumberError::malformed},
      {"/2", NumberError::malformed},
      {"1/-2", NumberError::malformed},
      {"1x", NumberError::malformed},
      {"--1", NumberError::malformed},
  };
  for (const auto& c : cases) {
    Coefficient v(7L);
    EXPECT_EQ(parseExactNumber(c.text, v), c.error) << c.text;
    EXPECT_EQ(toString(v), "7") << "value touched by " << c.text;
  }
}

TEST(ExactNumber, WritesTheShortestExactTextThatReadsBack) {
  const struct {
    const char* value;  // QQ text
    const char* text;
  } cases[] = {
      {"0", "0"},
      {"-42", "-42"},
      {"5:1/2", "5.5"},
      {"-1/1000", "-1e-3"},
      {"-1/100", "-0.01"},
      {"1/3", "1/3"},
      {"-2:1/3", "-7/3"},
      {"1/40000", "2.5e-5"},
      {"3000000000000000000000000000000", "3e+30"},
      {"1/100000000000000000000", "1e-20"},
      {"inf", "inf"},
      {"-inf", "-inf"},
      {"123456789012345678901234567:1/8", "123456789012345678901234567.125"},
  };
  for (const auto& c : cases) {
    const Coefficient v{QQ(c.value)};
    EXPECT_EQ(exactText(v), c.text) << c.value;
    if (std::string(c.text).find("inf") != std::string::npos) continue;
    Coefficient back;
    ASSERT_EQ(parseExactNumber(exactText(v), back), NumberError::none) << c.text;
    EXPECT_TRUE(identical(back, v)) << c.text;
  }
}

TEST(ExactNumber, InfinityWords) {
  bool positive = false;
  EXPECT_TRUE(isInfinityText("+INF", positive));
  EXPECT_TRUE(positive);
  EXPECT_TRUE(isInfinityText("-infinity", positive));
  EXPECT_FALSE(positive);
  EXPECT_FALSE(isInfinityText("infinit", positive));
  EXPECT_FALSE(isInfinityText("1e30", positive));
}

}  // namespace
}  // namespace lpconv
