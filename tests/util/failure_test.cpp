#include <lpconv/util/failure.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace lpconv {
namespace {

// Death tests match standard error with a regular expression; anchoring both ends and escaping
// the stars pins the exact bytes of the report.
TEST(ReportFailureDeathTest, WritesTheExactFrameAndExitsWithOne) {
  EXPECT_EXIT(reportFailure("scan for digit failed!"), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: scan for digit failed!\n$");
}

TEST(ReportFailureDeathTest, StringMessageIsWrittenAsItIs) {
  const std::string name = "a [b].lp";
  EXPECT_EXIT(reportFailure("The input file [ " + name + " ] could not be opened!"),
              ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: The input file \\[ a \\[b\\]\\.lp \\] could not be opened!\n$");
}

TEST(ReportFailureDeathTest, EmptyMessageStillHasTheFrame) {
  EXPECT_EXIT(reportFailure(""), ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: \n$");
}

TEST(ReportFailureDeathTest, NullLiteralSetsBadBitAndLosesTheRest) {
  EXPECT_EXIT(reportFailure(static_cast<const char*>(nullptr)), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: $");
}

TEST(ReportFailureDeathTest, PendingStandardOutputIsFlushedFirst) {
  // Standard output is a pipe or file here, so it is buffered; the tie to std::cerr flushes it
  // before the report. Redirect it to standard error to see the order in one stream.
  EXPECT_EXIT(
      {
        std::cout.rdbuf(std::cerr.rdbuf());
        std::cout << "|-> InEquations: 1";
        reportFailure("The amount of <= and >= equations differ!");
      },
      ::testing::ExitedWithCode(1),
      "^\\|-> InEquations: 1\n\\*\\*\\* FAIL: The amount of <= and >= equations differ!\n$");
}

namespace {
[[noreturn]] void exitWithSeven(const std::string&) { std::_Exit(7); }
void returnAnyway(const std::string&) {}
}  // namespace

TEST(FailureHandlerTest, ThrowFailureCarriesTheMessageAndTheDefaultComesBack) {
  EXPECT_EQ(setFailureHandler(throwFailure), nullptr);
  try {
    reportFailure("Vector: bad input");
    ADD_FAILURE() << "reportFailure returned";
  } catch (const FailureException& e) {
    EXPECT_STREQ(e.what(), "Vector: bad input");
  }
  try {
    reportFailure(static_cast<const char*>(nullptr));
  } catch (const GeneralException& e) {
    EXPECT_STREQ(e.what(), "");
  }
  EXPECT_EQ(setFailureHandler(nullptr), &throwFailure);
  EXPECT_EXIT(reportFailure("x"), ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: x\n$");
}

TEST(FailureHandlerDeathTest, AHandlerDecidesAndOneThatReturnsGetsTheDefaultFrame) {
  EXPECT_EXIT(
      {
        setFailureHandler(exitWithSeven);
        reportFailure("m");
      },
      ::testing::ExitedWithCode(7), "^$");
  EXPECT_EXIT(
      {
        setFailureHandler(returnAnyway);
        reportFailure("m");
      },
      ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: m\n$");
}

TEST(TerminateWithFailureDeathTest, ExitsWithStatusOneAndNoOutput) {
  EXPECT_EXIT(terminateWithFailure(), ::testing::ExitedWithCode(1), "^$");
}

TEST(ReportMessageTest, WritesTheMessageAndALineFeedAndReturns) {
  ::testing::internal::CaptureStderr();
  lastOutputTime = 0;
  reportMessage("status");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "status\n");
  EXPECT_NE(lastOutputTime, 0);
}

TEST(FlushLineTest, WritesOneNewline) {
  std::ostringstream out;
  out << "x";
  flushLine(out);
  EXPECT_EQ(out.str(), "x\n");
}

}  // namespace
}  // namespace lpconv
