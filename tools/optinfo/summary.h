#pragma once
// What optinfo tells about an .opt file: counts of rows, non-zeros and bound kinds, the largest
// denominator and the longest number. The rows of the two systems are counted while they are
// read (as a RowObserver), so the file's matrices are never held in memory.

#include <ostream>

#include <lpconv/numbers/qq.h>
#include <lpconv/numbers/zz.h>
#include <lpconv/optfile/opt_file.h>

namespace lpconv {

class OptSummary : public RowObserver {
 public:
  // Counts the non-zeros and numbers of one row of the equation or inequality matrix.
  void row(OptItem item, const Vector<QQ>& row) override;
  // Counts everything else of a file read with this summary as its observer.
  void addFile(const OptFile& file);
  // The summary, one "label: value" line each.
  void print(std::ostream& os) const;

 private:
  void addNumber(const QQ& x);
  void addNumbers(const Vector<QQ>& v);

  const char* sense = "none";
  long variables = 0;
  long equations = 0;
  long objectiveNonZeros = 0;
  long equationNonZeros = 0;
  long inequalityNonZeros = 0;
  // Inequality rows by their finite sides.
  long twoSided = 0, lowerOnly = 0, upperOnly = 0, freeRows = 0;
  // Variables by their finite bounds; the seven kinds do not overlap.
  long unstated = 0, freeVariables = 0, fixed = 0, lowerBounded = 0, upperBounded = 0,
       bothBounded = 0, zeroOne = 0;
  ZZ largestDenominator{1L};
  long longestNumber = 0;
};

}  // namespace lpconv
