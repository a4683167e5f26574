#include <gtest/gtest.h>
#include <lpconv/util/failure.h>

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

namespace lpconv {
namespace {

// Anchored at both ends, with the stars escaped: the exact bytes of the report.
TEST(FailureDeathTest, TheFrameOnStandardErrorAndStatusOne) {
  EXPECT_EXIT(reportFailure("scan for digit failed!"), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: scan for digit failed!\n$");
  EXPECT_EXIT(reportFailure(std::string()), ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: \n$");
  // A null literal sets the bad bit of std::cerr: the message and the line end are lost.
  EXPECT_EXIT(reportFailure(static_cast<const char*>(nullptr)), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: $");
  EXPECT_EXIT(terminateWithFailure(), ::testing::ExitedWithCode(1), "^$");
  // Pending standard output is flushed first (the tie); seen here in one stream.
  EXPECT_EXIT(
      {
        std::cout.rdbuf(std::cerr.rdbuf());
        std::cout << "|-> x";
        reportFailure("m");
      },
      ::testing::ExitedWithCode(1), "^\\|-> x\n\\*\\*\\* FAIL: m\n$");
}

[[noreturn]] void exitWithSeven(const std::string&) { std::_Exit(7); }
void returnAnyway(const std::string&) {}

TEST(FailureDeathTest, InstalledHandlers) {
  EXPECT_EQ(setFailureHandler(throwFailure), nullptr);
  for (const char* message : {"Vector: bad input", static_cast<const char*>(nullptr)}) {
    try {
      reportFailure(message);
    } catch (const GeneralException& e) {
      EXPECT_STREQ(e.what(), message == nullptr ? "" : message);
    }
  }
  EXPECT_EQ(setFailureHandler(nullptr), &throwFailure);
  EXPECT_EXIT((setFailureHandler(exitWithSeven), reportFailure("m")), ::testing::ExitedWithCode(7),
              "^$");
  // A handler that returns is followed by the default frame.
  EXPECT_EXIT((setFailureHandler(returnAnyway), reportFailure("m")), ::testing::ExitedWithCode(1),
              "^\n\\*\\*\\* FAIL: m\n$");
}

TEST(FailureTest, MessagesAndLines) {
  ::testing::internal::CaptureStderr();
  lastOutputTime = 0;
  reportMessage("status");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "status\n");
  EXPECT_NE(lastOutputTime, 0);
  std::ostringstream out;
  flushLine(out << "x");
  EXPECT_EQ(out.str(), "x\n");
  EXPECT_STREQ(ReadException("").what(), "Read exception");
}

}  // namespace
}  // namespace lpconv
