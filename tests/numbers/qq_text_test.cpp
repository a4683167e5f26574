#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

#include <lpconv/numbers/qq.h>
#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::failurePattern;

struct WriteCase {
  QQ value;
  const char* text;
};

TEST(QQWriteTest, WrittenForms) {
  const WriteCase cases[] = {
      {QQ(7, 2), "3:1/2"},
      {QQ(-7, 2), "-3:1/2"},
      {QQ(1, 3), "1/3"},
      {QQ(-1, 3), "-1/3"},
      {QQ(-5), "-5"},
      {QQ(42), "42"},
      {QQ(), "0"},
      {QQ(true), "inf"},
      {QQ(false), "-inf"},
      {QQ(ZZ("-340282366920938463463374607431768211457"), ZZ("18446744073709551616")),
       "-18446744073709551616:1/18446744073709551616"},
  };
  for (const WriteCase& c : cases) {
    EXPECT_EQ(toString(c.value), c.text);
    std::ostringstream out;
    out << c.value << "|";
    EXPECT_EQ(out.str(), std::string(c.text) + "|");
    std::string appended = "[";
    appendText(appended, c.value);
    EXPECT_EQ(appended, std::string("[") + c.text);
  }
}

TEST(QQWriteTest, WriterDoesNotNormalise) {
  QQ x;
  x.zaehler = ZZ(4L);  // 4/1 written field by field
  EXPECT_EQ(toString(x), "4");
  x.isPositive = false;
  x.nenner = ZZ(6L);
  EXPECT_EQ(toString(x), "-4/6");
  x.ganze = ZZ(2L);
  EXPECT_EQ(toString(x), "-2:4/6");
  QQ zero;
  zero.isPositive = false;
  EXPECT_EQ(toString(zero), "0");
}

struct ParseCase {
  const char* text;
  const char* written;
};

TEST(QQParseTest, AcceptedForms) {
  const ParseCase cases[] = {
      // Integers with base 0.
      {"0", "0"},
      {"-0", "0"},
      {"+17", "17"},
      {"010", "8"},
      {"0x10", "16"},
      {"-0b11", "-3"},
      {"  \t\n12", "12"},
      // Fractions, with a sign on either part.
      {"6/4", "1:1/2"},
      {"6/-4", "-1:1/2"},
      {"-6/-4", "1:1/2"},
      {"0/5", "0"},
      {"-0/5", "0"},
      {"1/3", "1/3"},
      {"010/0x10", "1/2"},
      // Mixed numbers.
      {"3:1/2", "3:1/2"},
      {"-3:1/2", "-3:1/2"},
      {"0:1/2", "1/2"},
      {"3:2/4", "3:1/2"},
      // Decimals with "." or ",".
      {"1.25", "1:1/4"},
      {"1,5", "1:1/2"},
      {"0.05", "1/20"},
      {"2.50", "2:1/2"},
      {"-0.5", "-1/2"},
      {"0.10000000000000001", "10000000000000001/100000000000000000"},
      {"3.0005", "3:1/2000"},
      {"1.0500", "1:1/20"},
      {"-2,125", "-2:1/8"},
      // Only the integer part of the text after the point counts.
      {"1.5/2", "1:1/5"},
      {"1.-5", "1:1/2"},
      // Exponents.
      {"1.5e2", "150"},
      {"15e-1", "1:1/2"},
      {"2e", "2"},
      {"2e+003", "2000"},
      {"1E2", "100"},
      {"-2.5e-3", "-1/400"},
      {"0e5", "0"},
      {"3:1/2e1", "35"},
      {"1e-0", "1"},
      {"1e+", "1"},
      {"1/2e2", "50"},
      {"1einf", "inf"},
      // Infinity; the text after "inf" is not looked at.
      {"inf", "inf"},
      {"+inf", "inf"},
      {"infinity", "inf"},
      {"-inf", "-inf"},
      {"-infxyz", "-inf"},
  };
  for (const ParseCase& c : cases) {
    SCOPED_TRACE(c.text);
    const QQ fromChars(c.text);
    const QQ fromString{std::string(c.text)};
    EXPECT_EQ(toString(fromChars), c.written);
    EXPECT_EQ(toString(fromString), c.written);
    EXPECT_TRUE(testing::isCanonical(fromChars));
  }
}

TEST(QQParseTest, MinusZeroIsPositive) {
  const QQ zero("-0");
  EXPECT_TRUE(zero.isPositive);
  EXPECT_TRUE(zero.isZero());
}

TEST(QQParseTest, WholeNumbersAreKeptAsRead) {
  // A second sign reaches the integer read, which GMP accepts for "-": the integer part is stored
  // negative, without normalisation, and written back field by field.
  const QQ x("--5");
  EXPECT_FALSE(x.isPositive);
  EXPECT_EQ(toString(x.ganze), "-5");
  EXPECT_EQ(toString(x), "--5");
}

TEST(QQParseTest, ParserReadsUpToTheFirstNul) {
  const std::string text(
      "12\0"
      "34",
      5);
  EXPECT_EQ(toString(QQ(text)), "12");
}

TEST(QQParseTest, RejectedIntegerTextThrows) {
  for (const char* text : {".5", "12a", "1/2/3", "nan", "-nan", "-.5", "x", "0x1g/2"}) {
    SCOPED_TRACE(text);
    try {
      const QQ x(text);
      ADD_FAILURE() << "no exception, value " << toString(x);
    } catch (const std::invalid_argument& e) {
      EXPECT_STREQ(e.what(), "mpz_set_str");
    }
  }
}

struct FatalCase {
  const char* text;
  const char* message;
};

TEST(QQParseDeathTest, MalformedTextIsFatal) {
  const FatalCase cases[] = {
      {"", "QQ: parse error1"},
      {"-", "QQ: parse error1"},
      {"+", "QQ: parse error1"},
      {"   ", "QQ: parse error1"},
      {"1.", "QQ: parse error1"},
      {"1.0", "QQ: parse error1"},
      {"1.00", "QQ: parse error1"},
      {"e5", "QQ: parse error1"},
      {"ix", "QQ: parse error2"},
      {"i", "QQ: parse error2"},
      {"-ifx", "QQ: parse error2"},
      {"inx", "QQ: parse error3"},
      {"in", "QQ: parse error3"},
      {"1/0", "QQ: division by zero1"},
      {"5/-0", "QQ: division by zero1"},
      {"abc/0", "QQ: division by zero1"},
      {"1:01/2", "QQ: malformed number1"},
      {"1:-1/2", "QQ: malformed number1"},
      {"1:0", "QQ: malformed number1"},
      {"1:-inf", "QQ: malformed number1"},
      {"1:5/2", "QQ: malformed number2"},
      {"1:2", "QQ: malformed number2"},
      {"1:1", "QQ: malformed number2"},
      {"1:2.5/3", "QQ: malformed number2"},
      {"a/0x", "QQ: division by zero1"},
      {"1:inf", "QQ: malformed number2"},
      {"1:", "QQ: parse error1"},
      {"0einf", "qq: 0 * INF is not defined!"},
  };
  for (const FatalCase& c : cases) {
    EXPECT_EXIT(QQ{c.text}, ::testing::ExitedWithCode(1), failurePattern(c.message)) << c.text;
  }
}

TEST(QQTextRoundTripTest, EveryWrittenValueReadsBackToItself) {
  testing::RandomNumbers random(201);
  for (int i = 0; i < 4000; ++i) {
    const QQ x = random.any();
    const std::string text = toString(x);
    const QQ back(text);
    ASSERT_EQ(toString(back), text);
    ASSERT_EQ(back.isInf, x.isInf) << text;
    ASSERT_EQ(back.isPositive, x.isPositive) << text;
    ASSERT_EQ(cmp(back.ganze, x.ganze), 0) << text;
    ASSERT_EQ(cmp(back.zaehler, x.zaehler), 0) << text;
    ASSERT_EQ(cmp(back.nenner, x.nenner), 0) << text;
    std::istringstream in(" " + text + " ");
    QQ streamed;
    in >> streamed;
    ASSERT_EQ(toString(streamed), text);
  }
}

struct StreamCase {
  const char* input;
  const char* written;
  const char* rest;
};

TEST(QQStreamTest, CollectsOneTokenAndLeavesTheRest) {
  const StreamCase cases[] = {
      {"  3:1/2 rest", "3:1/2", " rest"},
      {"1e5", "1", "e5"},
      {"-inf]", "-inf", "]"},
      {"inf", "inf", ""},
      {"/* note */ 5 6", "5", " 6"},
      {"// line\n 7;", "7", ";"},
      {"\t\r\n-0.25x", "-1/4", "x"},
      {"5in", "5", ""},
      {"5ix", "5", "x"},
      {"12 34", "12", " 34"},
  };
  for (const StreamCase& c : cases) {
    SCOPED_TRACE(c.input);
    std::istringstream in(c.input);
    QQ x;
    in >> x;
    EXPECT_EQ(toString(x), c.written);
    std::string rest;
    std::getline(in, rest, '\0');
    EXPECT_EQ(rest, c.rest);
  }
}

TEST(QQStreamTest, CommaAndSlashAreCollectedInto) {
  // "," is one of the collected characters, so "1,5/2" is one token: the decimal 1,5 with only
  // the integer part of "5/2" after the comma.
  std::istringstream in("1,5/2]");
  QQ x;
  in >> x;
  EXPECT_EQ(toString(x), "1:1/5");
  EXPECT_EQ(in.peek(), ']');
}

TEST(QQStreamDeathTest, EmptyTokenIsFatal) {
  for (const char* input : {"", "   ", "x", "inx", "]"}) {
    std::istringstream in(input);
    QQ x;
    EXPECT_EXIT(in >> x, ::testing::ExitedWithCode(1), failurePattern("QQ: parse error1")) << input;
  }
}

}  // namespace
}  // namespace lpconv
