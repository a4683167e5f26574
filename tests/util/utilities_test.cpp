#include <gtest/gtest.h>
#include <lpconv/util/durations.h>
#include <lpconv/util/full_precision.h>
#include <lpconv/util/paths.h>
#include <lpconv/util/random_seed.h>
#include <lpconv/util/strings.h>

#include <cstdlib>
#include <fstream>
#include <regex>
#include <sstream>
#include <string>

#include "patterns.h"

namespace lpconv {
namespace {

TEST(UtilitiesTest, Strings) {
  EXPECT_EQ(replaceAll("aaa", "a", "aa"), "aaaaaa");  // inserted text is not rescanned
  EXPECT_EQ(replaceAll("a.b.c", "", "x"), "a.b.c");
  EXPECT_EQ(replaceAll("1\\,2", "\\,", ","), "1,2");
  EXPECT_EQ(trim(" \t x y \n", " \t\n"), "x y");
  EXPECT_EQ(trimLeft("   ", " ") + trimRight("   ", " "), "");
  EXPECT_TRUE(endsWith("model.lp", ".lp") && endsWith("x", "") && !endsWith("lp", ".lp"));
  EXPECT_EQ(toUpper("Max: x1") + toLower("SUBJECT TO"), "MAX: X1subject to");
  EXPECT_EQ(toLower("\xC4"), "\xC4");  // bytes above 127 stay in the C locale
}

TEST(UtilitiesTest, Paths) {
  EXPECT_STREQ(baseName("/usr/x/prog"), "prog");
  EXPECT_STREQ(baseName("dir/"), "");
  EXPECT_STREQ(baseName("prog"), "prog");
  EXPECT_EQ(dirName("a/b/c.lp"), "a/b/");
  EXPECT_EQ(dirName("c.lp"), "");
  EXPECT_EQ(findSubstring("Subject To", ""), std::string("Subject To"));
  EXPECT_EQ(findSubstring("abc", "d"), nullptr);
  const std::string file = ::testing::TempDir() + "lpconv_paths_test";
  std::ofstream(file) << "x";
  EXPECT_TRUE(fileExists(file));
  EXPECT_GT(fileModificationTime(file), 0);
  EXPECT_EQ(fileModificationTime(file + ".missing"), -1);
  EXPECT_TRUE(isNewerThan(file, file + ".missing"));  // b missing: whether a exists
  EXPECT_FALSE(isNewerThan(file, file));
  std::remove(file.c_str());
}

TEST(UtilitiesTest, Patterns) {
  EXPECT_TRUE(search("Subject To", "subject to", false));
  EXPECT_FALSE(search("Subject To", "subject to", true));
  EXPECT_THROW(search("x", "(", false), std::regex_error);
  const std::string line = "c1: X12 + x9 >= 3";
  std::smatch match;
  ASSERT_TRUE(searchMatch(line, "x([0-9]+)", match));  // case-insensitive: X12 first
  EXPECT_EQ(match[1].str() + "@" + std::to_string(match.position(0)), "12@4");
  EXPECT_EQ(replacePattern("x1 + x2", "x([0-9])", "y$1"), "y1 + y2");
}

TEST(UtilitiesTest, DurationsPrecisionAndSeeds) {
  const std::pair<long, const char*> durations[] = {
      {-5, "-5 sec(s)"},
      {0, "0 sec(s)"},
      {59, "59 sec(s)"},
      {69, "1:09 min(s):sec(s)"},
      {3601, "1:00:01 hour(s):min(s):sec(s)"},
      {36000, "10:00:00 hour(s):min(s):sec(s)"},
      {90061, "1:01:01:01 day(s):hour(s):min(s):sec(s)"},
      {86400 + 36000, "1:10:00:00 day(s):hour(s):min(s):sec(s)"}};
  for (const auto& [seconds, text] : durations) EXPECT_EQ(formatDuration(seconds), text);
  std::ostringstream out;
  setFullPrecision(out) << 0.1 << " " << 2.5 << " " << 1e20;
  EXPECT_EQ(out.str(), "0.10000000000000001 2.5 1e+20");
  EXPECT_EQ(digitLimit + 0, 18);
  EXPECT_EQ(seedRandom(42), 42u);
  const int first = std::rand();
  srand(42);
  EXPECT_EQ(std::rand(), first);
  const std::uint32_t seed = seedRandom(0);  // from the kernel, and what srand received
  const int drawn = std::rand();
  srand(seed);
  EXPECT_EQ(std::rand(), drawn);
}

}  // namespace
}  // namespace lpconv
