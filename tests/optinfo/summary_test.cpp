// The summary's own arithmetic: the kinds of rows and bounds.

#include "summary.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace lpconv {
namespace {

// Every kind once; the sides and bounds of each kind stated as the converter writes them (the
// first variable's lower bound +inf: nothing stated).
TEST(OptSummary, CountsEveryKind) {
  const std::string text =
      "[ -inf ]\n[\n[ 0 0 0 0 0 0 1/3 ]\n]\n\n"
      "[\n[ 1 0 0 0 0 0 0 ]\n]\n[ 2 ]\n[ ]\n\n"
      "[\n[ 1 1 0 0 0 0 0 ]\n[ 0 1 0 0 0 0 0 ]\n[ 0 0 1 0 0 0 0 ]\n[ 0 0 0 -1 0 0 0 ]\n]\n"
      "[ 1 1 -inf -inf ]\n[ 4 inf 5 inf ]\n\n"
      "[ 0 0 0 0 0 0 0 ]\n[ inf -inf 0 -inf 0 2 -12:3/4 ]\n[ inf inf 1 7 inf 2 5 ]\n";
  std::istringstream in(text);
  OptSummary summary;
  summary.addFile(readOptFile(in, &summary));
  std::ostringstream out;
  summary.print(out);
  EXPECT_EQ(out.str(),
            "sense:               minimise\n"
            "variables:           7\n"
            "equations:           1\n"
            "inequalities:        4 (two-sided 1, lower only 1, upper only 1, free 1)\n"
            "non-zeros:           objective 1, equations 1, inequalities 5\n"
            "variable bounds:     not stated 1, free 1, fixed 1, lower only 1, upper only 1, both "
            "1, 0-1 1\n"
            "largest denominator: 4\n"
            "longest number:      7 characters\n");
}

}  // namespace
}  // namespace lpconv
