#include "summary.h"

#include <string>

namespace lpconv {

void OptSummary::addNumber(const QQ& x) {
  // Most entries of a large file are 0: one character, denominator 1.
  if (x.isZero()) {
    if (longestNumber < 1) longestNumber = 1;
    return;
  }
  const long length = textLength(x);
  if (length > longestNumber) longestNumber = length;
  if (cmp(x.nenner, largestDenominator) > 0) largestDenominator = x.nenner;
}

void OptSummary::addNumbers(const Vector<QQ>& v) {
  for (long i = 1; i <= v.getDimension(); ++i) addNumber(v[i]);
}

void OptSummary::row(OptItem item, const Vector<QQ>& row) {
  long& nonZeros = item == OptItem::equations ? equationNonZeros : inequalityNonZeros;
  // Rows of a large file are mostly zeros: those only tell that a one-character number exists.
  bool anyZero = false;
  const long width = row.getDimension();
  for (long j = 1; j <= width; ++j) {
    const QQ& x = row[j];
    if (x.isZero()) {
      anyZero = true;
    } else {
      ++nonZeros;
      addNumber(x);
    }
  }
  if (anyZero) addNumber(QQ::zero());
}

void OptSummary::addFile(const OptFile& file) {
  variables = file.integers.getDimension();
  equations = file.equationRhs.getDimension();
  if (file.sense.getDimension() == 1) sense = file.sense[1].isPositive ? "maximise" : "minimise";
  addNumbers(file.sense);
  for (long r = 1; r <= file.objective.getRows(); ++r) {
    const Vector<QQ>& row = file.objective[r];
    for (long j = 1; j <= row.getDimension(); ++j) objectiveNonZeros += row[j].isZero() ? 0 : 1;
    addNumbers(row);
  }
  // Rows of the systems that were kept (a file read without this summary as observer).
  for (long r = 1; r <= file.equations.getRows(); ++r) row(OptItem::equations, file.equations[r]);
  for (long r = 1; r <= file.inequalities.getRows(); ++r) {
    row(OptItem::inequalities, file.inequalities[r]);
  }
  for (const Vector<QQ>* v :
       {&file.equationRhs, &file.lower, &file.upper, &file.variableLower, &file.variableUpper}) {
    addNumbers(*v);
  }
  for (long i = 1; i <= file.integers.getDimension(); ++i) {
    const long length = static_cast<long>(std::to_string(file.integers[i]).size());
    if (length > longestNumber) longestNumber = length;
  }

  for (long i = 1; i <= file.lower.getDimension(); ++i) {
    const bool lower = !file.lower[i].isInf;
    const bool upper = !file.upper[i].isInf;
    ++(lower ? (upper ? twoSided : lowerOnly) : (upper ? upperOnly : freeRows));
  }
  // A lower bound of +inf is the converter's mark of a variable whose bounds nobody stated; any
  // other infinite bound is no bound.
  for (long i = 1; i <= file.variableLower.getDimension(); ++i) {
    const QQ& low = file.variableLower[i];
    const QQ& up = file.variableUpper[i];
    if (low.isInf && low.isPositive) {
      ++unstated;
    } else if (low.isInf) {
      ++(up.isInf ? freeVariables : upperBounded);
    } else if (up.isInf) {
      ++lowerBounded;
    } else if (low == up) {
      ++fixed;
    } else if (low.isZero() && up == QQ(1L)) {
      ++zeroOne;
    } else {
      ++bothBounded;
    }
  }
}

void OptSummary::print(std::ostream& os) const {
  os << "sense:               " << sense << "\n"
     << "variables:           " << variables << "\n"
     << "equations:           " << equations << "\n"
     << "inequalities:        " << twoSided + lowerOnly + upperOnly + freeRows << " (two-sided "
     << twoSided << ", lower only " << lowerOnly << ", upper only " << upperOnly << ", free "
     << freeRows << ")\n"
     << "non-zeros:           objective " << objectiveNonZeros << ", equations " << equationNonZeros
     << ", inequalities " << inequalityNonZeros << "\n"
     << "variable bounds:     not stated " << unstated << ", free " << freeVariables << ", fixed "
     << fixed << ", lower only " << lowerBounded << ", upper only " << upperBounded << ", both "
     << bothBounded << ", 0-1 " << zeroOne << "\n"
     << "largest denominator: " << largestDenominator << "\n"
     << "longest number:      " << longestNumber << " characters\n";
}

}  // namespace lpconv
