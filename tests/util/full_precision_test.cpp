#include <lpconv/util/full_precision.h>

#include <gtest/gtest.h>

#include <sstream>

namespace lpconv {
namespace {

TEST(FullPrecisionTest, DefaultNotationWithSeventeenDigits) {
  std::ostringstream out;
  out << std::fixed << std::setprecision(2);
  std::ostream& returned = setFullPrecision(out);
  EXPECT_EQ(&returned, &out);
  EXPECT_EQ(out.precision(), 17);
  EXPECT_EQ(out.flags() & std::ios_base::floatfield, std::ios_base::fmtflags{});
  out << 0.1 << " " << 2.5L << " " << 1e20 << " " << 0.1L << " " << 1e-5;
  EXPECT_EQ(out.str(), "0.10000000000000001 2.5 1e+20 0.1 1.0000000000000001e-05");
}

TEST(FullPrecisionTest, ScientificFlagIsClearedToo) {
  std::ostringstream out;
  out << std::scientific << setFullPrecision << 3.0;
  EXPECT_EQ(out.str(), "3");
  EXPECT_EQ(digitLimit, 18);
  EXPECT_EQ(fullPrecisionDigits(), 17);
}

}  // namespace
}  // namespace lpconv
