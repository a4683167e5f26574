#include <lpconv/converter/line_matchers.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include <lpconv/converter/output_name.h>
#include <lpconv/util/patterns.h>

namespace lpconv {
namespace {

// Random short texts over the characters the patterns care about, so that near misses ("Mi",
// "subject  to", "x" before a non-digit, CR/LF inside the header) are common.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned seed) : engine_(seed) {}

  std::string next() {
    static const std::vector<std::string> pieces = {
        "Min",  "Max",   "min",  "MAX", "mIn", "Mi", "Ma", ":",  ":",   "x",   "X",    "x1",
        "X23",  "0",     "7",    " ",   "\t",  "\r", "\n", "+",  "-",   "--",  "+-",   "-+",
        "++",   "<=",    ">=",   "=",   "<",   ">",  "lp", ".",  "a",   "Subject To",
        "subject to", "SUBJECT TO", "Subject  To", "Subjec", "Bound", "bounds", "GEN", "gen",
        "bin",  "BIN",   "Bi",   "Ge",  "Boun", "o", "b", "i", "n", "\x80", "\xff"};
    std::uniform_int_distribution<int> length(0, 12);
    std::uniform_int_distribution<std::size_t> piece(0, pieces.size() - 1);
    std::string text;
    for (int i = length(engine_); i > 0; --i) text += pieces[piece(engine_)];
    return text;
  }

 private:
  std::mt19937 engine_;
};

constexpr int propertyCases = 20000;

TEST(LineMatchersPropertyTest, SubjectToAndSectionStartAgreeWithTheRegexSearch) {
  RandomTexts texts(1);
  for (int i = 0; i < propertyCases; ++i) {
    const std::string text = texts.next();
    ASSERT_EQ(containsSubjectTo(text), search(text, "Subject To", false)) << text;
    ASSERT_EQ(startsSection(text), search(text, "Bound|Gen|Bin", false)) << text;
    ASSERT_EQ(containsIgnoringCase(text, "free"), search(text, "free", false)) << text;
  }
}

TEST(LineMatchersPropertyTest, FirstVariableDigitsAgreeWithGroupOne) {
  RandomTexts texts(2);
  for (int i = 0; i < propertyCases; ++i) {
    const std::string text = texts.next();
    std::smatch match;
    const bool found = searchMatch(text, "x([0-9]+)", match);
    const auto digits = firstVariableDigits(text);
    ASSERT_EQ(digits.has_value(), found) << text;
    if (found) {
      ASSERT_EQ(std::string(*digits), match[1].str()) << text;
    }
  }
}

TEST(LineMatchersPropertyTest, ObjectiveHeaderAgreesWithTheRegexForms) {
  RandomTexts texts(3);
  for (int i = 0; i < propertyCases; ++i) {
    const std::string text = texts.next();
    ASSERT_EQ(hasMinimiseHeader(text), search(text, "min(.|\r|\n)*:", false)) << text;
    std::string removed = text;
    const bool changed = removeObjectiveHeader(removed);
    const std::string expected = replacePattern(text, "(Min|Max)(.|\r|\n)*:", "");
    ASSERT_EQ(removed, expected) << text;
    ASSERT_EQ(changed, expected != text) << text;
  }
}

TEST(LineMatchersPropertyTest, NormalisationAgreesWithTheFiveReplacements) {
  RandomTexts texts(4);
  for (int i = 0; i < propertyCases; ++i) {
    const std::string text = texts.next();
    std::string expected = replacePattern(text, "( |\t|\r|\n)", "");
    expected = replacePattern(expected, "\\+-", "-");
    expected = replacePattern(expected, "-\\+", "-");
    expected = replacePattern(expected, "--", "+");
    expected = replacePattern(expected, "\\+\\+", "+");
    ASSERT_EQ(normaliseExpression(text), expected) << text;
  }
}

TEST(LineMatchersPropertyTest, OutputNameAgreesWithTheRegexReplacement) {
  RandomTexts texts(5);
  for (int i = 0; i < propertyCases; ++i) {
    const std::string text = texts.next();
    ASSERT_EQ(outputNameFor(text), replacePattern(text, ".lp$", ".opt")) << text;
  }
}

TEST(LineMatchersTest, HeaderRemovalRunsFromTheFirstMinOrMaxToTheLastColon) {
  struct Case {
    std::string text;
    std::string removed;
    bool minimise;
  };
  const std::vector<Case> cases = {
      {"Maximize\n obj: 3 x1 + 2 x2\n", " 3 x1 + 2 x2\n", false},
      {"Minimize\n obj: x1\n", " x1\n", true},
      {"minimize\n obj: x1\n", "minimize\n obj: x1\n", true},  // the removal is case-sensitive
      {"Max\r\nc: x1: x2\n", " x2\n", false},                   // up to the last colon
      {"obj: x1 Min\n", "obj: x1 Min\n", false},                // no colon after the header
      {"a Max b : c Min : d\n", "a  d\n", true},
      {"", "", false},
  };
  for (const Case& c : cases) {
    std::string text = c.text;
    removeObjectiveHeader(text);
    EXPECT_EQ(text, c.removed) << c.text;
    EXPECT_EQ(hasMinimiseHeader(c.text), c.minimise) << c.text;
  }
}

// The matchers never recurse: a header spanning a very long text is handled in linear time,
// where the regex engine would overflow its stack.
TEST(LineMatchersTest, LongObjectiveTextsAreHandled) {
  std::string text = "Minimize\n obj:";
  for (int i = 1; i <= 200000; ++i) text += " + " + std::to_string(i) + " x" + std::to_string(i);
  text += "\n";
  std::string removed = text;
  EXPECT_TRUE(hasMinimiseHeader(text));
  EXPECT_TRUE(removeObjectiveHeader(removed));
  EXPECT_EQ(removed, text.substr(text.find(':') + 1));
}

}  // namespace
}  // namespace lpconv
