#include <lpconv/util/patterns.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lpconv {
namespace {

TEST(SearchTest, Table) {
  struct Case {
    std::string text, pattern;
    bool sensitive, insensitive;
  };
  const std::vector<Case> cases = {
      {"Subject To", "subject to", false, true},
      {"SUBJECT TO", "Subject To", false, true},
      {"Subject To", "Subject To", true, true},
      {" st", "Subject To", false, false},
      {"Bounds", "Bound|Gen|Bin", true, true},
      {"GENERAL", "Bound|Gen|Bin", false, true},
      {"binary", "Bound|Gen|Bin", false, true},
      {"", "x([0-9]+)", false, false},
      {"", "", true, true},
      {"3 X12", "x([0-9]+)", false, true},
      {"a\nb", "a.b", false, false},  // "." does not cross a line feed
      {"a\rb", "a.b", false, false},  // nor a carriage return
      {"a\nb", "a(.|\r|\n)b", true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text + " ~ " + c.pattern);
    EXPECT_EQ(search(c.text, c.pattern, true), c.sensitive);
    EXPECT_EQ(search(c.text, c.pattern, false), c.insensitive);
  }
}

TEST(SearchTest, BadPatternThrows) { EXPECT_THROW(search("x", "(", false), std::regex_error); }

TEST(SearchMatchTest, FirstMatchAndItsGroups) {
  const std::string line = " 3 x12 + 4 X7 >= x100";
  std::smatch match;
  ASSERT_TRUE(searchMatch(line, "x([0-9]+)", match));
  EXPECT_EQ(match[0].str(), "x12");
  EXPECT_EQ(match[1].str(), "12");
  EXPECT_EQ(match.position(0), 3);

  const std::string upper = "MAX 7 X9";
  ASSERT_TRUE(searchMatch(upper, "x([0-9]+)", match));  // always case-insensitive
  EXPECT_EQ(match[1].str(), "9");

  const std::string none = "y1 + z2";
  EXPECT_FALSE(searchMatch(none, "x([0-9]+)", match));
}

TEST(ReplacePatternTest, Table) {
  struct Case {
    std::string text, pattern, replacement, expected;
  };
  const std::vector<Case> cases = {
      {"model.lp", ".lp$", ".opt", "model.opt"},
      {"modellp", ".lp$", ".opt", "mode.opt"},
      {"alp", ".lp$", ".opt", ".opt"},
      {"m.LP", ".lp$", ".opt", "m.LP"},  // case-sensitive
      {"a.lp.lp", ".lp$", ".opt", "a.lp.opt"},
      {"a  b\t c", "( |\t|\r|\n)", "", "abc"},
      {"aaa", "a", "aa", "aaaaaa"},
      {"x1 x22", "x([0-9]+)", "[$1]", "[1] [22]"},
      {"ab", "b", "$&$&", "abb"},
      {"ab", "", "-", "-a-b-"},  // empty matches between every character
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text + " ~ " + c.pattern);
    EXPECT_EQ(replacePattern(c.text, c.pattern, c.replacement), c.expected);
  }
}

}  // namespace
}  // namespace lpconv
