#include <lpconv/util/strings.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lpconv {
namespace {

const std::string whitespace = " \t\n\r\f\v";

TEST(ReplaceAllTest, Table) {
  struct Case {
    std::string text, pattern, replacement, expected;
  };
  const std::vector<Case> cases = {
      {"aaa", "a", "aa", "aaaaaa"},  // inserted text is not rescanned
      {"a+-b", "+-", "-", "a-b"},   {"a+-+-b", "+-", "-", "a--b"},
      {"--x", "--", "+", "+x"},     {"---x", "--", "+", "+-x"},  // left to right, no overlap
      {"abc", "x", "y", "abc"},     {"", "a", "b", ""},
      {"abab", "ab", "", ""},       {"xab", "ab", "abab", "xabab"},
      {"aaaa", "aa", "a", "aa"},  // the shrunk text is not rescanned either
      {"abc", "", "x", "abc"},    // empty pattern: unchanged, and no endless loop
      {"a.b", ".", "\\.", "a\\.b"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text + " / " + c.pattern + " / " + c.replacement);
    EXPECT_EQ(replaceAll(c.text, c.pattern, c.replacement), c.expected);
  }
}

TEST(TrimTest, Table) {
  struct Case {
    std::string text, set, left, right, both;
  };
  const std::vector<Case> cases = {
      {"  \t x y \n", whitespace, "x y \n", "  \t x y", "x y"},
      {" \t\n\r\f\v", whitespace, "", "", ""},
      {"", whitespace, "", "", ""},
      {"x", whitespace, "x", "x", "x"},
      {"++5", "+", "5", "++5", "5"},
      {"+-+5-", "+-", "5-", "+-+5", "5"},
      {"5++", "+", "5++", "5", "5"},
      {"abc", "", "abc", "abc", "abc"},
      {"aba", "a", "ba", "ab", "b"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE("[" + c.text + "] with [" + c.set + "]");
    EXPECT_EQ(trimLeft(c.text, c.set), c.left);
    EXPECT_EQ(trimRight(c.text, c.set), c.right);
    EXPECT_EQ(trim(c.text, c.set), c.both);
  }
}

TEST(EndsWithTest, Table) {
  struct Case {
    std::string text, suffix;
    bool expected;
  };
  const std::vector<Case> cases = {
      {"model.lp", ".lp", true}, {"model.lp", ".LP", false},
      {"lp", "model.lp", false}, {"", "", true},
      {"abc", "", true},         {"abc", "abc", true},
      {"abc", "bc", true},       {"abc", "ab", false},
      {"", "a", false},          {"xbc", "abc", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text + " / " + c.suffix);
    EXPECT_EQ(endsWith(c.text, c.suffix), c.expected);
  }
}

TEST(CaseMappingTest, AsciiBytesAreMappedOthersKept) {
  EXPECT_EQ(toLower("Subject To 3X"), "subject to 3x");
  EXPECT_EQ(toUpper("Subject To 3x"), "SUBJECT TO 3X");
  EXPECT_EQ(toLower(""), "");
  // High bytes arrive as negative values; in the C locale they come back unchanged.
  const std::string high = "\xC4\xFF\x80";
  EXPECT_EQ(toLower(high), high);
  EXPECT_EQ(toUpper(high), high);
  // Embedded NUL bytes are part of the text.
  EXPECT_EQ(toUpper(std::string("a\0b", 3)), std::string("A\0B", 3));
}

TEST(CaseMappingTest, ArgumentIsNotModified) {
  const std::string text = "MiXeD";
  EXPECT_EQ(toLower(text), "mixed");
  EXPECT_EQ(text, "MiXeD");
}

}  // namespace
}  // namespace lpconv
