#include <gtest/gtest.h>
#include <lpconv/numbers/qq.h>

#include <sstream>
#include <string>

#include "tests/numbers/qq_text_oracle.h"
#include "tests/numbers/test_support.h"

namespace lpconv {
namespace {

using testing::outcome;

TEST(QQTextTest, WrittenForms) {
  QQ unnormalised(-5, 3);  // written field by field
  unnormalised.zaehler = ZZ(4L);
  // clang-format off
  const std::pair<QQ, const char*> cases[] = {
      {QQ(7, 2), "3:1/2"}, {QQ(-7, 2), "-3:1/2"}, {QQ(-1, 3), "-1/3"}, {QQ(-5), "-5"},
      {QQ(), "0"}, {QQ(true), "inf"}, {QQ(false), "-inf"}, {unnormalised, "-1:4/3"},
      {QQ(ZZ("-340282366920938463463374607431768211457"), ZZ("18446744073709551616")),
       "-18446744073709551616:1/18446744073709551616"},
  };
  // clang-format on
  for (const auto& [value, text] : cases) {
    std::ostringstream out;
    out << value << "|";
    EXPECT_EQ(out.str(), std::string(text) + "|");
  }
}

// Every outcome of the text constructor: the written value, the failure message or the throw.
TEST(QQTextTest, ParseOutcomes) {
  // clang-format off
  const std::pair<const char*, const char*> cases[] = {
      {"-0", "0"}, {"+17", "17"}, {"010", "8"}, {"0x10", "16"}, {"-0b11", "-3"},
      {" \t\n12", "12"}, {"--5", "--5"}, {"6/-4", "-1:1/2"}, {"-6/-4", "1:1/2"}, {"-0/5", "0"},
      {"010/0x10", "1/2"}, {"-3:1/2", "-3:1/2"}, {"0:1/2", "1/2"}, {"3:2/4", "3:1/2"},
      {"1.25", "1:1/4"}, {"1,5", "1:1/2"}, {"0.05", "1/20"}, {"2.50", "2:1/2"}, {"-0.5", "-1/2"},
      {"3.0005", "3:1/2000"}, {"1.5/2", "1:1/5"}, {"1.-5", "1:1/2"}, {"1.1.1", "1:1/10"},
      {"1. 05", "1:1/2"}, {"1.5e2", "150"}, {"15e-1", "1:1/2"}, {"2e", "2"}, {"2e+003", "2000"},
      {"-2.5E-3", "-1/400"}, {"3:1/2e1", "35"}, {"1e+", "1"}, {"1/2e2", "50"},
      {"1e1e1", "10000000000"}, {"1einf", "inf"}, {"1e-inf", "0"},
      {"1e1000000", nullptr}, {"inf", "inf"}, {"+infinity", "inf"}, {"-infxyz", "-inf"},
      {"", "QQ: parse error1"}, {"+", "QQ: parse error1"}, {"1.00", "QQ: parse error1"},
      {"e5", "QQ: parse error1"}, {"1:", "QQ: parse error1"}, {"1e00e5", "QQ: parse error1"},
      {"i", "QQ: parse error2"}, {"-ifx", "QQ: parse error2"}, {"in", "QQ: parse error3"},
      {"5/-0", "QQ: division by zero1"}, {"abc/0", "QQ: division by zero1"},
      {"1:01/2", "QQ: malformed number1"}, {"1:-1/2", "QQ: malformed number1"},
      {"1:-inf", "QQ: malformed number1"}, {"1:5/2", "QQ: malformed number2"},
      {"1:2.5/3", "QQ: malformed number2"}, {"1:inf", "QQ: malformed number2"},
      {"1:1:1", "QQ: malformed number2"}, {"1.--5", messages::kSignInField},
      {"0einf", "qq: 0 * INF is not defined!"}, {"1e1000001", "QQ: exponent out of range"},
      {"1e1000000000", "QQ: exponent out of range"}, {"1e-1000000000", "QQ: exponent out of range"},
      {"1e1e1e1", "QQ: exponent out of range"}, {"1e1000000.5", "QQ: exponent out of range"},
      {"1e1/1001", "QQ: exponent out of range"}, {"1e1.0001", "QQ: exponent out of range"},
      {".5", "mpz_set_str"}, {"12a", "mpz_set_str"}, {"1/2/3", "mpz_set_str"},
      {"nan", "mpz_set_str"}, {"0x1g/2", "mpz_set_str"},
  };
  // clang-format on
  for (const auto& [text, expected] : cases) {
    if (expected == nullptr) continue;  // too long to spell; checked below
    EXPECT_EQ(outcome([text = text] { return toString(QQ(text)); }), expected) << text;
    EXPECT_EQ(outcome([text = text] { return toString(QQ(std::string(text))); }), expected) << text;
  }
  EXPECT_EQ(toString(QQ(std::string("12\0"
                                    "34",
                                    5))),
            "12");
  EXPECT_EQ(toString(QQ("1e1000000")), "1" + std::string(1000000, '0'));
  EXPECT_EQ(toString(QQ("-1e-1000000")), "-1/1" + std::string(1000000, '0'));
}

TEST(QQTextTest, EveryWrittenValueReadsBackToItself) {
  testing::RandomNumbers random(201);
  for (int i = 0; i < 4000; ++i) {
    const QQ x = random.any();
    const std::string text = toString(x);
    const QQ back(text);
    ASSERT_TRUE(back.isInf == x.isInf && back.isPositive == x.isPositive && back.ganze == x.ganze &&
                back.zaehler == x.zaehler && back.nenner == x.nenner)
        << text;
    std::istringstream in(" " + text + " ");
    QQ streamed;
    in >> streamed;
    ASSERT_EQ(toString(streamed), text);
  }
}

TEST(QQTextDeathTest, AParseFailureIsTheFailureReport) {
  EXPECT_EXIT(QQ("1/0"), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: QQ: division by zero1\n$");
}

// Separators chain: each level reads the text after it by the same rules, to any depth.
TEST(QQTextTest, LongChainsEndWithTheLiteralResult) {
  std::string decimals = "1";
  std::string mixed = "1";
  std::string exponents = "1";
  for (int i = 0; i < 100000; ++i) {
    decimals += ".1";
    mixed += ":1";
    exponents += "e 0";
  }
  EXPECT_EQ(toString(QQ(decimals)), "1:1/10");
  EXPECT_EQ(outcome([&] { return toString(QQ(mixed)); }), "QQ: malformed number2");
  EXPECT_EQ(toString(QQ(exponents)), "1");
  std::istringstream in(" " + decimals + "]");
  QQ streamed;
  in >> streamed;
  EXPECT_EQ(toString(streamed), "1:1/10");
  EXPECT_EQ(in.get(), ']');
}

// Texts over a small alphabet, exponents kept small enough for the recursive oracle, and the
// shapes that drive recursion: chains of separators, signs and zeros.
std::string randomText(testing::RandomNumbers& random) {
  static const std::string kAlphabet = "0123456789-+.,:/ \t\n*xin0000011111::..//e";
  std::string text;
  const std::size_t length = random.below(3) == 0 ? random.below(400) : random.below(14);
  bool exponent = false;
  while (text.size() < length) {
    const char c = kAlphabet[random.below(kAlphabet.size())];
    if (c == 'e') {
      if (exponent) continue;
      exponent = true;
      text += random.below(2) == 0 ? "e" : "E-";
      text += std::to_string(random.below(40));
      if (random.below(3) == 0) text += "/" + std::to_string(1 + random.below(9));
      continue;
    }
    text += c;
  }
  return text;
}

TEST(QQTextTest, AgreesWithTheRecursiveOracle) {
  testing::RandomNumbers random(311);
  int compared = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::string text = randomText(random);
    // The stream reader: same value or failure, same state bits, same position.
    std::istringstream in(text), literal(text);
    QQ a;
    QQ b;
    ASSERT_EQ(outcome([&] { return toString((in >> a, a)); }),
              outcome([&] { return toString((oracle::read(literal, b), b)); }))
        << text;
    ASSERT_EQ(in.rdstate(), literal.rdstate()) << text;
    ASSERT_EQ(in.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in),
              literal.rdbuf()->pubseekoff(0, std::ios::cur, std::ios::in))
        << text;
    // Fractional exponents with terms beyond the bound are out of range by design.
    const std::string got = outcome([text = text] { return toString(QQ(text)); });
    if (got == messages::kExponentOutOfRange) continue;
    ASSERT_EQ(got, outcome([&] { return toString(oracle::parse(text)); })) << text;
    ++compared;
  }
  EXPECT_GT(compared, 19000);
}

TEST(QQText, TextLengthIsTheWrittenLength) {
  for (const char* text : {"0", "7", "-7", "1/2", "-1/2", "3:1/2", "-3:1/2", "inf", "-inf",
                           "123456789012345678901234567890:1/1234567890123456789012345",
                           "-10000000000000001/100000000000000000", "18446744073709551616"}) {
    const QQ x(text);
    EXPECT_EQ(textLength(x), static_cast<long>(toString(x).size())) << text;
  }
}

}  // namespace
}  // namespace lpconv
