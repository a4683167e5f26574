#include <lpconv/util/durations.h>

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace lpconv {
namespace {

TEST(FormatDurationTest, Table) {
  struct Case {
    std::int64_t seconds;
    std::string expected;
  };
  const std::vector<Case> cases = {
      {0, "0 sec(s)"},
      {-5, "-5 sec(s)"},
      {-100000, "-100000 sec(s)"},
      {1, "1 sec(s)"},
      {45, "45 sec(s)"},
      {59, "59 sec(s)"},
      {60, "1:00 min(s):sec(s)"},
      {61, "1:01 min(s):sec(s)"},
      {69, "1:09 min(s):sec(s)"},
      {70, "1:10 min(s):sec(s)"},
      {125, "2:05 min(s):sec(s)"},
      {599, "9:59 min(s):sec(s)"},
      {3599, "59:59 min(s):sec(s)"},
      {3600, "1:00:00 hour(s):min(s):sec(s)"},
      {3601, "1:00:01 hour(s):min(s):sec(s)"},
      {3725, "1:02:05 hour(s):min(s):sec(s)"},
      {4200, "1:10:00 hour(s):min(s):sec(s)"},
      {36000, "10:00:00 hour(s):min(s):sec(s)"},
      {86399, "23:59:59 hour(s):min(s):sec(s)"},
      {86400, "1:00:00:00 day(s):hour(s):min(s):sec(s)"},
      {86401, "1:00:00:01 day(s):hour(s):min(s):sec(s)"},
      {90061, "1:01:01:01 day(s):hour(s):min(s):sec(s)"},
      {86400 + 36000 + 600 + 10, "1:10:10:10 day(s):hour(s):min(s):sec(s)"},
      {900000, "10:10:00:00 day(s):hour(s):min(s):sec(s)"},
      {INT64_C(8640000000), "100000:00:00:00 day(s):hour(s):min(s):sec(s)"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.seconds);
    EXPECT_EQ(formatDuration(c.seconds), c.expected);
  }
}

}  // namespace
}  // namespace lpconv
