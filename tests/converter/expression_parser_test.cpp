#include <lpconv/converter/expression_parser.h>

#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace lpconv {
namespace {

std::map<long, std::string> entriesOf(const SparseRow& row) {
  std::map<long, std::string> out;
  for (const RowEntry& e : row.entries()) out[e.index] = toString(e.value);
  return out;
}

struct ScanCase {
  std::string text;
  long n;
  std::map<long, std::string> entries;  // non-zero entries only
  std::string constant;
  std::string rest;
};

// The scan's documented behaviour, quirks included: after a variable, a sign or any other
// character the scan moves one character and then past the digits, so "." and "e" are read again.
TEST(ExpressionParserTest, ScanTable) {
  const std::string big(400, '9');  // overflows string-to-double to +infinity
  const std::vector<ScanCase> cases = {
      {"3 x1 + 2 x2", 2, {{1, "3"}, {2, "2"}}, "0", ""},
      {"2.5x1", 1, {{1, "1/2"}}, "0", ""},
      {"2.0x1", 1, {}, "0", ""},
      {"0x3", 3, {}, "0", ""},
      {"x1+x2", 2, {{2, "1"}}, "0", ""},
      {"-x1", 1, {{1, "-1"}}, "0", ""},
      {"3+x1-2x2+4", 2, {{1, "1"}, {2, "-2"}}, "7", ""},
      {"-0.5 x1", 1, {{1, "1/2"}}, "0", ""},
      {"1e3 x1", 1, {{1, "1"}}, "0", ""},
      {"x1--x2", 2, {{2, "1"}}, "0", ""},
      {"x1+-x2", 2, {{2, "-1"}}, "0", ""},
      {"2 x1 + 3 >= 10", 1, {{1, "2"}}, "3", ">=10"},
      {"2 x2 + y >= 10", 2, {{2, "2"}}, "0", ">=10"},
      {"2 x2 + y <= 5", 2, {{2, "2"}}, "1", "<=5"},
      {"+", 0, {}, "1", ""},
      {"+0", 0, {}, "0", ""},
      {"<=+-5", 0, {}, "-5", ""},  // normalised again before the scan
      {"2 x1 <= ---5", 1, {{1, "2"}}, "0", "<=+-5"},
      {"c1: x1 + x2 >= 1", 2, {{1, "1"}, {2, "1"}}, "0", ">=1"},
      {"3x1x2", 2, {{1, "3"}, {2, "3"}}, "0", ""},
      {"x2 + 4 x1 + 5 x2", 2, {{1, "4"}, {2, "5"}}, "0", ""},
      {"x1 >= 5\f", 1, {}, "0", ">=5"},
      {"<=5", 0, {}, "5", ""},
      {"= 5", 0, {}, "5", ""},
      {"+ + 0 + + x1", 1, {{1, "1"}}, "0", ""},
      {"0.1 x1", 1, {{1, "10000000000000001/100000000000000000"}}, "0", ""},
      {"0x1F x1", 1, {{1, "1"}}, "0", ""},  // "0" then x1 = 0, then "F" reads as 1
      {big + " x1", 1, {{1, "inf"}}, "0", ""},
      {"- " + big + " x1", 1, {{1, "-inf"}}, "0", ""},
      {"inf x1", 1, {{1, "1"}}, "0", ""},
      {"x1 + 2 = 3 <= 4", 1, {}, "2", "=3<=4"},
      {"7", 0, {}, "7", ""},
      {"2 x1 +", 1, {{1, "2"}}, "1", ""},  // a sign at the end reads its implicit 1
      {"", 0, {}, "0", ""},
  };
  for (const ScanCase& c : cases) {
    QQ constant(99L);
    SparseRow row;
    row.assign(1, QQ(42L));  // the parser starts from an empty row
    const std::string rest = parseExpression(c.text, c.n, constant, row);
    auto expected = c.entries;
    for (auto it = expected.begin(); it != expected.end();) {
      it = it->second == "0" ? expected.erase(it) : std::next(it);
    }
    EXPECT_EQ(entriesOf(row), expected) << c.text;
    EXPECT_EQ(toString(constant), c.constant) << c.text;
    EXPECT_EQ(rest, c.rest) << c.text;
  }
}

TEST(ExpressionParserTest, NanReachesTheTextParserWhichThrows) {
  QQ constant;
  SparseRow row;
  EXPECT_THROW(parseExpression("nan x1", 1, constant, row), std::invalid_argument);
}

TEST(ExpressionParserDeathTest, IndexOutsideOneToN) {
  for (const char* text : {"x0", "3 x3", "x-1", "x", "x99999999999999999999"}) {
    QQ constant;
    SparseRow row;
    EXPECT_EXIT(parseExpression(text, 2, constant, row), ::testing::ExitedWithCode(1),
                "^\n\\*\\*\\* FAIL: Array: index out of range\n$")
        << text;
  }
}

TEST(ExpressionParserTest, ReadIndexFollowsBaseTenStringToInteger) {
  const std::vector<std::pair<std::string, long>> cases = {
      {"12", 12},     {"", 0},           {"+7x", 7},           {"-3", -3},
      {"\f\v 5", 5},  {"0x10", 0},       {"4294967297", 4294967297L},
      {"99999999999999999999", LONG_MAX}, {"-99999999999999999999", LONG_MIN},
      {"9223372036854775807", LONG_MAX},  {"-9223372036854775808", LONG_MIN},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(readIndex(text.c_str()), value) << text;
}

// Long runs of signs and form feeds: the implicit-coefficient look-ahead and the white-space
// skip reuse their last answer, and the answers stay right as the scan moves past them.
TEST(ExpressionParserTest, LongRunsGiveTheSameAnswersAsShortOnes) {
  std::string text;
  for (int i = 0; i < 5000; ++i) text += "+-\f";
  text += "0 + x1";
  QQ constant;
  SparseRow row;
  parseExpression(text, 1, constant, row);
  EXPECT_EQ(entriesOf(row), (std::map<long, std::string>{{1, "1"}}));
  EXPECT_EQ(toString(constant), "0");
}

}  // namespace
}  // namespace lpconv
