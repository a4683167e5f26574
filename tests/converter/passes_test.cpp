// The passes over the LP text, each on strings: what it returns, and the quirks it must keep.
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <lpconv/converter/expression_parser.h>
#include <lpconv/converter/input_text.h>
#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/lp_reader.h>
#include <lpconv/converter/text_scan.h>

namespace lpconv {
namespace {

std::map<long, std::string> entriesOf(const SparseRow& row) {
  std::map<long, std::string> out;
  for (const RowEntry& e : row.entries()) out[e.index] = toString(e.value);
  return out;
}

std::string boundsOf(const VariableBounds& bounds) {
  std::string out;
  for (const auto& [k, pair] : bounds.stated()) {
    out += "x" + std::to_string(k) + ":" + toString(pair.lower) + "," + toString(pair.upper) + " ";
  }
  return out;
}

TEST(PassesTest, LinesFollowTheStreamLineReader) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"", {}},
      {"\n", {""}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"a\n\nb", {"a", "", "b"}},
      {"\r\n\r", {"\r", "\r"}},
      {std::string("a\0b\n", 4), {std::string("a\0b", 3)}}};
  for (const auto& [text, expected] : cases) {
    Lines lines(text);
    std::vector<std::string> got;
    for (std::string_view line; lines.next(line);) got.emplace_back(line);
    EXPECT_EQ(got, expected) << text;
  }
}

TEST(PassesTest, DiscoverVariablesTakesTheFirstIndexOfEachLine) {
  const std::vector<std::pair<std::string, long>> cases = {
      {"", 0},       {"x1 + x9 <= 4\n", 1},  {"box12: X3\n", 12}, {"x4294967297\n", 1},
      {"x2\nx7", 7}, {"x2147483648\nx5", 5}, {"x\ny", 0},         {"xx3 x9", 3}};
  for (const auto& [text, n] : cases) EXPECT_EQ(discoverVariables(text), n) << text;
}

TEST(PassesTest, CountRowsAndTheLineThatEndsTheBlock) {
  struct Case {
    std::string text;
    long less, greater, equations;
    std::string sectionLine;
    std::size_t subjectTo;
    std::string rows;
  };
  const std::vector<Case> cases = {
      {"obj\nSubject To\nx1 <= 2\nx1 >= 1\nx2 = 3\n\nBounds\nx1 <= 4", 1, 1, 1, "Bounds", 4,
       "x1 <= 2\nx1 >= 1\nx2 = 3\n\n"},
      {"x1 <= 2\nx1 >= 1\n", 0, 0, 0, "", 16, ""},  // no "Subject To": nothing counted
      {"SUBJECT TO\nx1 <= 3 >= 2\nx1 >= 1\nbinding: x1 = 1\nx1 = 2", 1, 1, 0, "binding: x1 = 1", 0,
       "x1 <= 3 >= 2\nx1 >= 1\n"},
      {"a\r\nsubject to\nx1 =< 2\n", 0, 0, 1, "", 3, "x1 =< 2\n"},
  };
  for (const Case& c : cases) {
    const ConstraintBlock block = countRows(c.text, "model.lp");
    EXPECT_EQ(block.subjectTo, c.subjectTo) << c.text;
    EXPECT_EQ(block.rows, c.rows) << c.text;
    EXPECT_EQ(block.counts.lessEqual, c.less) << c.text;
    EXPECT_EQ(block.counts.greaterEqual, c.greater) << c.text;
    EXPECT_EQ(block.counts.equations, c.equations) << c.text;
    EXPECT_EQ(block.sectionLine, c.sectionLine) << c.text;
    if (!c.sectionLine.empty()) {
      EXPECT_EQ(c.text.substr(block.afterSectionLine).find(c.sectionLine), std::string::npos);
    }
  }
}

TEST(PassesTest, SectionsInTheirFixedOrder) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"Bounds\n0 <= x1 <= 40\n-inf <= x3 <= inf\n", "x1:0,40 x3:-inf,inf "},
      {"Bounds\n-5 <= x1 <= 1\nx2 <= 2.5\n", "x1:-5,1 x2:-5,2:1/2 "},  // the lower value carries
      {"Bounds\nx2 <= 10\n", "x2:0,10 "},                              // the default lower value
      {"Bounds\nx1 >= 2\nx2 <= 3\n", ""},                              // ">=" ends the section
      {"Bounds\n x1 free\nGeneral\nx1 x2\n", "x1:-inf,inf x2:-inf,inf "},
      {"Bounds\n1e999 <= x1 <= 5\nGen\nx1\n", "x1:-inf,inf "},  // +inf lower: "unstated"
      {"Bounds\n1 <= x1 <= 5\nGen\nx1\n", "x1:1,5 "},
      {"Binary\nx1\nGeneral\nx2\n", "x1:0,1 "},  // General after Binary unread
      {"General\nx1\nBounds\nx2 <= 1\nBinary\nx3\n", "x1:-inf,inf "},  // a later Bound is unread
      {"Gen\nx1\nBin\nx2 x3\n", "x1:-inf,inf x2:0,1 x3:0,1 "},
      {"Bounds\n0.1 <= x1\n", ""},  // no "=" after x1
  };
  for (const auto& [text, expected] : cases) {
    const std::string whole = "Subject To\n" + text;
    const ConstraintBlock block = countRows(whole, "model.lp");
    EXPECT_EQ(boundsOf(readSections(whole, block, 3)), expected) << text;
  }
  VariableBounds bounds;
  EXPECT_EQ(toString(bounds.at(2).lower), "inf");  // reading adds no entry
  EXPECT_TRUE(bounds.stated().empty());
}

TEST(PassesTest, ObjectiveHeaderAndSense) {
  struct Case {
    std::string text;
    bool present, minimise;
    std::map<long, std::string> row;
  };
  const std::vector<Case> cases = {
      {"Maximize\n obj: 3 x1 + 2 x2\nSubject To\nx1 >= x2\nx2 <= x1",
       true,
       false,
       {{1, "3"}, {2, "2"}}},
      {"Minimize\n obj: x1 + x2\nSubject To\n", true, true, {{2, "1"}}},
      {"minimize\n obj: x1\nSubject To\n", false, true, {}},  // the removal is case-sensitive
      {"Maximize\n min: x1\n", true, true, {}},               // no "Subject To": the whole text
      {"Max\nobj: 2 x1 +\n", true, false, {{1, "2"}}},
      {"obj: x1 <= 3\n", false, false, {}},  // no header: never parsed
  };
  for (const Case& c : cases) {
    const Objective objective = readObjective(c.text, countRows(c.text, "m.lp"), 2);
    EXPECT_EQ(objective.present, c.present) << c.text;
    EXPECT_EQ(objective.minimise, c.minimise) << c.text;
    EXPECT_EQ(entriesOf(objective.row), c.row) << c.text;
  }
}

// The fourth pass over the rows the counting found, as the run reads them.
Constraints constraintsOf(const std::string& text, long n) {
  return readConstraints(countRows(text, "m.lp"), n);
}

TEST(PassesTest, ConstraintsAreFiledByTheirRest) {
  const std::string text =
      "Subject To\n2 x1 + 3 >= 10\n2 x1 + 3 <= 10\n\nx2 = 4 + x1\nx1 - x2 <= 5\nx2 >= 1\nBounds\n"
      "x1 = 1";
  const Constraints c = constraintsOf(text, 2);
  ASSERT_EQ(c.greaterEqual.size(), 2u);
  ASSERT_EQ(c.lessEqual.size(), 2u);
  ASSERT_EQ(c.equations.size(), 1u);                // the Bound line is no row
  EXPECT_EQ(toString(c.greaterEqual[0].rhs), "7");  // -3 + 10
  EXPECT_EQ(toString(c.lessEqual[0].rhs), "13");    // +3 + 10: the "<=" asymmetry
  EXPECT_EQ(toString(c.greaterEqual[1].rhs), "1");
  // A leading variable without a coefficient gets the scan's initial 0.
  EXPECT_EQ(entriesOf(c.equations[0].coefficients), (std::map<long, std::string>{{1, "-1"}}));
  EXPECT_EQ(toString(c.equations[0].rhs), "4");
  EXPECT_EQ(entriesOf(c.lessEqual[1].coefficients), (std::map<long, std::string>{{2, "-1"}}));
  EXPECT_EQ(toString(c.lessEqual[1].rhs), "5");
}

TEST(PassesTest, CountingAndFilingClassifyInTheirOwnOrders) {
  struct Case {
    std::string text;
    Relation counted, filed;
  };
  const std::vector<Case> cases = {
      {"x1 <= 3", Relation::kLessEqual, Relation::kLessEqual},
      {"x1 >= 3", Relation::kGreaterEqual, Relation::kGreaterEqual},
      {"x1 <= 3 >= 2", Relation::kLessEqual, Relation::kGreaterEqual},
      {"x1 >= 3 <= 4", Relation::kLessEqual, Relation::kGreaterEqual},
      {"x1 = 3", Relation::kEquation, Relation::kEquation},
      {"x1 =< 3", Relation::kEquation, Relation::kEquation},
      {"x1 < 3", Relation::kNone, Relation::kNone},
      {"", Relation::kNone, Relation::kNone},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(classifyRelation(c.text, FirstTried::kLessEqual), c.counted) << c.text;
    EXPECT_EQ(classifyRelation(c.text, FirstTried::kGreaterEqual), c.filed) << c.text;
  }
}

// A long objective over few variables keeps one entry per index; over many, its entries are
// finished in steps. Either way the last mention of an index wins and zeros drop out.
TEST(PassesTest, LongObjectivesKeepTheLastMentionOfEachIndex) {
  for (const long n : {3L, 400000L}) {
    std::string text = "Maximize\nobj: 1 x" + std::to_string(n);
    std::map<long, std::string> expected{{n, "1"}};
    for (long i = 0; i < 300000; ++i) {
      const long index = 1 + (i * 7919) % n;
      const long value = i % 5;  // 0 erases an earlier mention
      text += " + " + std::to_string(value) + " x" + std::to_string(index);
      if (value == 0) {
        expected.erase(index);
      } else {
        expected[index] = std::to_string(value);
      }
    }
    text += "\nSubject To\n";
    const Objective objective = readObjective(text, countRows(text, "m.lp"), n);
    ASSERT_EQ(entriesOf(objective.row), expected) << n;
  }
}

TEST(PassesDeathTest, FailuresOfThePasses) {
  // The whole report as a regular expression: the frame and the message, nothing else.
  const auto fails = [](const std::string& message) {
    std::string pattern = "^\n\\*\\*\\* FAIL: ";
    for (const char c : message) {
      if (std::string_view("\\^$.|?*+()[]{}").find(c) != std::string_view::npos) pattern += '\\';
      pattern += c;
    }
    return pattern + "\n$";
  };
  EXPECT_EXIT(countRows("Subject To\nEnd\n", "a.lp"), ::testing::ExitedWithCode(1),
              fails("The file [ a.lp ] is incomplete!"));
  EXPECT_EXIT(countRows("Subject To\nx1 <= 1\n", "a.lp"), ::testing::ExitedWithCode(1),
              fails("The amount of <= and >= equations differ!"));
  const std::string objective = "Max\no: x1 <= 2\n";
  EXPECT_EXIT(readObjective(objective, countRows(objective, "a.lp"), 1),
              ::testing::ExitedWithCode(1),
              fails("Objective function error: relation sign found!"));
  EXPECT_EXIT(constraintsOf("Subject To\n= x1 + 2\n", 1), ::testing::ExitedWithCode(1),
              fails("relation error: no sign found!"));
  // Counted as "<=" and filed as ">=": the ">=" group is filled beyond its count.
  EXPECT_EXIT(constraintsOf("Subject To\nx1 <= 3 >= 2\nx1 >= 1\n", 1), ::testing::ExitedWithCode(1),
              fails("Array: index out of range"));
  EXPECT_EXIT(leadsToDigit("x1 <=  +", 5), ::testing::ExitedWithCode(1),
              fails("scan for digit failed!"));
  for (const char* text : {"x0", "3 x3", "x-1", "x", "x99999999999999999999"}) {
    EXPECT_EXIT(parseExpression(text, 2), ::testing::ExitedWithCode(1),
                fails("Array: index out of range"))
        << text;
  }
  for (const char* bound : {"x-1 <= 5", "x0 free", "x3 <= 1"}) {
    const std::string text = std::string("Subject To\nBounds\n") + bound + "\n";
    EXPECT_EXIT(readSections(text, countRows(text, "m.lp"), 2), ::testing::ExitedWithCode(1),
                fails("Array: index out of range"))
        << bound;
  }
}

TEST(PassesTest, ScanRulesAndIndexReading) {
  struct Case {
    std::string text;
    std::map<long, std::string> row;
    std::string constant, rest;
  };
  const std::string big(400, '9');  // overflows string-to-double to +infinity
  const std::vector<Case> cases = {
      {"3 x1 + 2 x2", {{1, "3"}, {2, "2"}}, "0", ""},
      {"2.5x1", {{1, "1/2"}}, "0", ""},
      {"2.0x1", {}, "0", ""},
      {"0x3", {}, "0", ""},
      {"x1+x2", {{2, "1"}}, "0", ""},
      {"-x1", {{1, "-1"}}, "0", ""},
      {"3+x1-2x2+4", {{1, "1"}, {2, "-2"}}, "7", ""},
      {"-0.5 x1", {{1, "1/2"}}, "0", ""},
      {"1e3 x1", {{1, "1"}}, "0", ""},
      {"x1--x2", {{2, "1"}}, "0", ""},
      {"x1+-x2", {{2, "-1"}}, "0", ""},
      {"2 x2 + y >= 10", {{2, "2"}}, "0", ">=10"},
      {"2 x2 + y <= 5", {{2, "2"}}, "1", "<=5"},
      {"+", {}, "1", ""},
      {"+0", {}, "0", ""},
      {"<=+-5", {}, "-5", ""},
      {"2 x1 <= ---5", {{1, "2"}}, "0", "<=+-5"},
      {"3x1x2", {{1, "3"}, {2, "3"}}, "0", ""},
      {"x2 + 4 x1 + 5 x2", {{1, "4"}, {2, "5"}}, "0", ""},
      {"x1 >= 5\f", {}, "0", ">=5"},
      {"+ + 0 + + x1", {{1, "1"}}, "0", ""},
      {"0.1 x1", {{1, "10000000000000001/100000000000000000"}}, "0", ""},
      {"0x1F x1", {{1, "1"}}, "0", ""},
      {big + " x1", {{1, "inf"}}, "0", ""},
      {"- " + big + " x1", {{1, "-inf"}}, "0", ""},
      {"x1 + 2 = 3 <= 4", {}, "2", "=3<=4"},
      {"2 x1 +", {{1, "2"}}, "1", ""},
      {"", {}, "0", ""},
  };
  ExpressionScanner scanner;  // one scanner and one result for all: nothing may carry over
  Expression reused;
  for (const Case& c : cases) {
    scanner.scan(c.text, 3, reused);
    for (const Expression& e : {parseExpression(c.text, 3), reused}) {
      EXPECT_EQ(entriesOf(e.row), c.row) << c.text;
      EXPECT_EQ(toString(e.constant), c.constant) << c.text;
      EXPECT_EQ(e.rest, c.rest) << c.text;
    }
  }
  std::string signs;
  for (int i = 0; i < 5000; ++i) signs += "+-\f";  // the cached look-aheads stay right
  EXPECT_EQ(entriesOf(parseExpression(signs + "0 + x1", 1).row),
            (std::map<long, std::string>{{1, "1"}}));
  EXPECT_THROW(parseExpression("nan x1", 1), std::invalid_argument);

  const std::vector<std::pair<std::string, long>> indices = {{"12", 12},
                                                             {"", 0},
                                                             {"+7x", 7},
                                                             {"-3", -3},
                                                             {"\f\v 5", 5},
                                                             {"0x10", 0},
                                                             {"99999999999999999999", LONG_MAX},
                                                             {"-99999999999999999999", LONG_MIN},
                                                             {"-9223372036854775808", LONG_MIN}};
  for (const auto& [text, value] : indices) EXPECT_EQ(readIndex(text.c_str()), value) << text;
  for (const auto& [text, from, leads] : std::vector<std::tuple<std::string, std::size_t, bool>>{
           {" +-7", 0, true}, {"- .5", 0, false}, {"\t5", 0, false}, {"x <= 3", 4, true}}) {
    EXPECT_EQ(leadsToDigit(text, from), leads) << text;
  }
}

}  // namespace
}  // namespace lpconv
