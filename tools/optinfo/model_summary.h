#pragma once
// What optinfo tells about a model read from an LP or MPS file: the counts the .opt summary
// gives, and what a user checks before trusting the model to an exact solver: the range of the
// magnitudes in each part, the largest numerator and denominator, and how many values look like
// a rounded decimal of a simple fraction.

#include <ostream>

#include <lpconv/model/model.h>
#include <lpconv/numbers/zz.h>

namespace lpconv {

// The smallest and largest magnitude of the non-zero finite values of one part of a model.
class MagnitudeRange {
 public:
  void add(const Coefficient& value);
  // "[SMALLEST, LARGEST]" with six significant digits, or "none".
  void print(std::ostream& os) const;

 private:
  bool empty_ = true;
  Coefficient smallest_, largest_;
};

class ModelSummary {
 public:
  explicit ModelSummary(const Model& model);
  void print(std::ostream& os) const;

 private:
  void addValue(const Coefficient& value);

  const char* sense = "minimise";
  long variables = 0, integers = 0;
  long equations = 0;
  long twoSided = 0, lowerOnly = 0, upperOnly = 0, freeRows = 0;
  long objectiveNonZeros = 0, equationNonZeros = 0, inequalityNonZeros = 0;
  long freeVariables = 0, fixed = 0, lowerBounded = 0, upperBounded = 0, bothBounded = 0,
       zeroOne = 0;
  MagnitudeRange matrix, objective, bounds, sides;
  ZZ largestNumerator{0L}, largestDenominator{1L};
  long roundedDecimals = 0;
};

}  // namespace lpconv
