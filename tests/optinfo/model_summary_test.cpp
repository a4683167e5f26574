// The summary of a model: its counts, the magnitudes of each part, the largest numerator and
// denominator, and the values that look like a rounded decimal of a simple fraction.

#include "model_summary.h"

#include <gtest/gtest.h>

#include <lpconv/formats/exact_number.h>

#include <sstream>
#include <string>
#include <vector>

#include "rounded_decimal.h"

namespace lpconv {
namespace {

Coefficient decimal(const char* text) {
  Coefficient value;
  EXPECT_EQ(parseExactNumber(text, value), NumberError::none) << text;
  return value;
}

TEST(RoundedDecimal, TellsRoundedFractionsFromExactValues) {
  struct Case {
    const char* text;
    bool looks;
  };
  for (const Case& c : std::vector<Case>{
           {"0.333333333333", true},      // 1/3 to 12 digits
           {"-0.333333333333", true},     // the sign does not matter
           {"0.33333333333", false},      // 11 digits only
           {"0.666666666667", true},      // 2/3 rounded up
           {"0.142857142857", true},      // 1/7
           {"3.14285714285714", true},    // 22/7
           {"0.0101010101010101", true},  // 1/99
           {"0.00990099009901", false},   // 1/101: the denominator is too large
           {"0.333333333343", false},     // ten units of the last digit away from 1/3
           {"0.123456789012", false},     // near no simple fraction
           {"0.5", false},                // exactly 1/2
           {"123456789012345", false},    // an integer
           {"1/3", false},                // the fraction itself
           {"0", false},
           {"0.3333333333333333333333333333333333333333", true},  // beyond 128 bits
           {"12345678901234567890123456789.3333333333333333333333", true},
       }) {
    EXPECT_EQ(looksLikeRoundedFraction(decimal(c.text)), c.looks) << c.text;
  }
  EXPECT_FALSE(looksLikeRoundedFraction(Coefficient::infinity()));
}

TEST(ModelSummary, CountsRangesAndSuspiciousValues) {
  Model m;
  const auto x = m.addColumn("x");
  const auto y = m.addColumn("y");
  const auto z = m.addColumn("z");
  m.setSense(ObjectiveSense::maximize);
  m.setInteger(y, true);
  m.setColumnUpper(y, Coefficient(1));
  m.setColumnLower(z, Coefficient::minusInfinity());
  m.setColumnUpper(x, decimal("250"));
  m.setObjective(x, decimal("-0.333333333333"));
  m.setObjective(z, Coefficient(4));
  std::vector<ModelEntry> r1{{x, decimal("0.001")}, {y, decimal("1e5")}};
  m.addRow("r1", r1, Coefficient(3), Coefficient(3));
  std::vector<ModelEntry> r2{{z, decimal("2/7")}};
  m.addRow("r2", r2, Coefficient::minusInfinity(), decimal("12345678901234567890"));
  std::vector<ModelEntry> r3{{x, Coefficient(1)}, {z, Coefficient(-1)}};
  m.addRow("r3", r3, decimal("0.5"), Coefficient::infinity());
  std::ostringstream out;
  ModelSummary(m).print(out);
  EXPECT_EQ(out.str(),
            "sense:               maximise\n"
            "variables:           3 (integer 1)\n"
            "equations:           1\n"
            "inequalities:        2 (two-sided 0, lower only 1, upper only 1, free 0)\n"
            "non-zeros:           objective 2, equations 2, inequalities 3\n"
            "variable bounds:     free 1, fixed 0, lower only 0, upper only 0, both 1, 0-1 1\n"
            "magnitudes:          matrix [0.001, 100000], objective [0.333333, 4], bounds [1, "
            "250], sides [0.5, 1.23457e+19]\n"
            "largest numerator:   12345678901234567890\n"
            "largest denominator: 1000000000000\n"
            "rounded decimals:    1 (values of 12 or more digits within a unit of their last "
            "digit of p/q, q <= 100)\n");
}

}  // namespace
}  // namespace lpconv
