#include <gtest/gtest.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/trace.h>

#include <string>

namespace lpconv {
namespace {

// Each step: 'e' enterLevel(false), 'n' enterLevel(true), 'l' endLine, 'L' leaveLevel(false),
// 'q' leaveLevel(true), 'r' resetLevels; the returned pieces are joined with "," and the depth
// follows.
std::string run(const std::string& steps) {
  resetLevels();
  std::string out;
  for (const char s : steps) {
    out += s == 'e'   ? enterLevel(false)
           : s == 'n' ? enterLevel(true)
           : s == 'l' ? endLine()
           : s == 'L' ? leaveLevel(false)
           : s == 'q' ? leaveLevel(true)
                      : resetLevels();
    out += ",";
  }
  return out + std::to_string(traceDepth());
}

TEST(TraceTest, PiecesAndDepth) {
  const std::pair<const char*, const char*> cases[] = {
      {"eLeLeL", "|->,\n,|->,\n,|->,\n,0"},             // three status lines
      {"elnlnl", "|->,\n,|    |,\n,|    |    |,\n,3"},  // prefixes by depth
      {"eeLL", "|->,\n|    |->,\n,,0"},                 // a deeper line closes the open one
      {"eq", "|->,\n,0"},
      {"elL", "|->,\n,,0"},
      {"elq", "|->,\n,,0"},
      {"eleLq", "|->,\n,|    |->,\n,,0"},  // quiet after endLine, whatever is pending
      {"Llqq", ",\n,,,0"},                 // below the outermost level: a no-op
      {"eer", "|->,\n|    |->,\n,0"},
  };
  for (const auto& [steps, expected] : cases) EXPECT_EQ(run(steps), expected) << steps;
  resetLevels();
  std::string last;
  for (int i = 0; i < 127; ++i) last = enterLevel(true);
  EXPECT_EQ(last.size(), 2 + 126 * 5u);
  setFailureHandler(throwFailure);
  try {
    enterLevel(false);
    ADD_FAILURE() << "entered level 128";
  } catch (const FailureException& e) {
    EXPECT_STREQ(e.what(), "Maximum thread depth reached");
  }
  setFailureHandler(nullptr);
  EXPECT_EQ(run("e"), "|->,1");  // the trace is usable after the failure unwound
}

TEST(TraceDeathTest, TheHundredTwentyEighthLevelIsFatal) {
  EXPECT_EXIT((resetLevels(),
               [] {
                 for (int i = 0; i < 128; ++i) enterLevel(false);
               }()),
              ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: Maximum thread depth reached\n$");
}

}  // namespace
}  // namespace lpconv
