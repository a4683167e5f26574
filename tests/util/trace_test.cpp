#include <lpconv/util/trace.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lpconv {
namespace {

// The trace state is process-wide; every test starts from a clean state.
class TraceTest : public ::testing::Test {
 protected:
  void SetUp() override { resetLevels(); }
  void TearDown() override { resetLevels(); }
};

TEST_F(TraceTest, StatusLinePatternGivesArrowAndLineFeed) {
  std::string out;
  for (const char* label : {"InEquations: 4", "Equations: 2", "Variables: 3"}) {
    // Sequenced like the converter's stream insertions: prefix first, line end last.
    out += enterLevel(false);
    out += std::string(" ") + label;
    out += leaveLevel(false);
    EXPECT_EQ(traceDepth(), 0);
  }
  EXPECT_EQ(out, "|-> InEquations: 4\n|-> Equations: 2\n|-> Variables: 3\n");
}

TEST_F(TraceTest, PrefixesByDepthWithAndWithoutArrow) {
  EXPECT_EQ(enterLevel(false), "|->");
  EXPECT_EQ(endLine(), "\n");
  EXPECT_EQ(enterLevel(true), "|    |");
  EXPECT_EQ(endLine(), "\n");
  EXPECT_EQ(enterLevel(true), "|    |    |");
  EXPECT_EQ(traceDepth(), 3);
}

TEST_F(TraceTest, OpenLineAtCurrentLevelIsClosedByTheDeeperPrefix) {
  EXPECT_EQ(enterLevel(false), "|->");
  EXPECT_EQ(enterLevel(false), "\n|    |->");
  // The pending line of depth 1 was closed by the second prefix; depth 2 is open now.
  EXPECT_EQ(leaveLevel(false), "\n");
  EXPECT_EQ(leaveLevel(false), "");
}

TEST_F(TraceTest, LeaveLevelResultsTable) {
  struct Case {
    bool endLineFirst;
    bool quiet;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {false, false, "\n"},  // line still pending
      {false, true, "\n"},   // quiet, but endLine never called here
      {true, false, ""},     // line ended: nothing to close
      {true, true, ""},
  };
  for (const Case& c : cases) {
    resetLevels();
    EXPECT_EQ(enterLevel(false), "|->");
    if (c.endLineFirst) endLine();
    EXPECT_EQ(leaveLevel(c.quiet), c.expected) << c.endLineFirst << c.quiet;
    EXPECT_EQ(traceDepth(), 0);
  }
}

TEST_F(TraceTest, QuietLeaveIsSilentAfterEndLineEvenWithANewPendingLine) {
  enterLevel(false);
  endLine();
  enterLevel(false);  // depth 2 pending, depth 1 ended
  EXPECT_EQ(leaveLevel(false), "\n");
  // Back at depth 1: its line was ended, so quiet gives "" and non-quiet looks at pending only.
  EXPECT_EQ(leaveLevel(true), "");
}

TEST_F(TraceTest, LeavingBelowTheOutermostLevelIsANoOp) {
  EXPECT_EQ(leaveLevel(false), "");
  EXPECT_EQ(traceDepth(), 0);
  endLine();
  EXPECT_EQ(leaveLevel(true), "");
  EXPECT_EQ(traceDepth(), 0);
  // lineEnded[0] is left as it is at depth 0, so quiet stays silent until a reset.
  EXPECT_EQ(leaveLevel(true), "");
}

TEST_F(TraceTest, ResetReturnsLineFeedAndClearsEverything) {
  enterLevel(false);
  enterLevel(false);
  EXPECT_EQ(resetLevels(), "\n");
  EXPECT_EQ(traceDepth(), 0);
  EXPECT_EQ(enterLevel(false), "|->");
}

TEST_F(TraceTest, HundredTwentySevenLevelsAreAllowed) {
  std::string last;
  for (int i = 0; i < 127; ++i) last = enterLevel(true);
  EXPECT_EQ(traceDepth(), 127);
  std::string expected = "\n|";
  for (int i = 0; i < 126; ++i) expected += "    |";
  EXPECT_EQ(last, expected);
}

TEST(TraceDeathTest, TheHundredTwentyEighthLevelIsFatal) {
  EXPECT_EXIT(
      {
        resetLevels();
        for (int i = 0; i < 128; ++i) enterLevel(false);
      },
      ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: Maximum thread depth reached\n$");
}

}  // namespace
}  // namespace lpconv
