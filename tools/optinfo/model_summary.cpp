#include "model_summary.h"

#include <cstdio>

#include "rounded_decimal.h"

namespace lpconv {

namespace {

bool isInfinite(const Coefficient& c) { return !c.isInline() && c.big().isInf; }

Coefficient magnitude(const Coefficient& c) {
  Coefficient m = c;
  if (c.isInline() ? c.numerator() < 0 : !c.big().isPositive) m.negate();
  return m;
}

// Decided by the approximations where they are far enough apart, exactly otherwise.
bool less(const Coefficient& a, const Coefficient& b) {
  const dbl_t x = approximate(a);
  const dbl_t y = approximate(b);
  const dbl_t gap = (x < y ? y - x : x - y);
  if (gap > (x < y ? y : x) * 1e-15L) return x < y;
  return a.toQQ() < b.toQQ();
}

void printApproximately(std::ostream& os, const Coefficient& c) {
  char text[64];
  std::snprintf(text, sizeof text, "%.6Lg", approximate(c));
  os << text;
}

}  // namespace

void MagnitudeRange::add(const Coefficient& value) {
  if (value.isZero() || isInfinite(value)) return;
  Coefficient m = magnitude(value);
  if (empty_) {
    smallest_ = m;
    largest_ = std::move(m);
    empty_ = false;
    return;
  }
  // Most values of a model repeat: identical ones need no comparison.
  if (identical(m, smallest_) || identical(m, largest_)) return;
  if (less(m, smallest_)) {
    smallest_ = std::move(m);
  } else if (less(largest_, m)) {
    largest_ = std::move(m);
  }
}

void MagnitudeRange::print(std::ostream& os) const {
  if (empty_) {
    os << "none";
    return;
  }
  os << "[";
  printApproximately(os, smallest_);
  os << ", ";
  printApproximately(os, largest_);
  os << "]";
}

void ModelSummary::addValue(const Coefficient& value) {
  if (value.isZero() || isInfinite(value)) return;
  if (looksLikeRoundedFraction(value)) ++roundedDecimals;
  if (value.isInline()) {
    const std::int64_t n = value.numerator();
    const ZZ numerator(n < 0 ? -n : n);
    if (cmp(numerator, largestNumerator) > 0) largestNumerator = numerator;
    const ZZ denominator(static_cast<long>(value.denominator()));
    if (cmp(denominator, largestDenominator) > 0) largestDenominator = denominator;
    return;
  }
  const QQ& q = value.big();
  ZZ numerator = q.ganze * q.nenner + q.zaehler;
  if (cmp(numerator, largestNumerator) > 0) largestNumerator = numerator;
  if (cmp(q.nenner, largestDenominator) > 0) largestDenominator = q.nenner;
}

ModelSummary::ModelSummary(const Model& model) {
  sense = model.sense() == ObjectiveSense::maximize ? "maximise" : "minimise";
  variables = model.columnCount();
  for (Model::Index j = 0; j < model.columnCount(); ++j) {
    if (model.isInteger(j)) ++integers;
    const Coefficient& c = model.objective(j);
    if (!c.isZero()) ++objectiveNonZeros;
    objective.add(c);
    addValue(c);
    const Coefficient& low = model.columnLower(j);
    const Coefficient& up = model.columnUpper(j);
    bounds.add(low);
    bounds.add(up);
    addValue(low);
    addValue(up);
    if (isInfinite(low)) {
      ++(isInfinite(up) ? freeVariables : upperBounded);
    } else if (isInfinite(up)) {
      ++lowerBounded;
    } else if (identical(low, up)) {
      ++fixed;
    } else if (low.isZero() && identical(up, Coefficient(1))) {
      ++zeroOne;
    } else {
      ++bothBounded;
    }
  }
  addValue(model.objectiveConstant());
  for (Model::Index i = 0; i < model.rowCount(); ++i) {
    const Coefficient& low = model.rowLower(i);
    const Coefficient& up = model.rowUpper(i);
    const bool equation = !isInfinite(low) && identical(low, up);
    if (equation) {
      ++equations;
    } else {
      ++(isInfinite(low) ? (isInfinite(up) ? freeRows : upperOnly)
                         : (isInfinite(up) ? lowerOnly : twoSided));
    }
    sides.add(low);
    sides.add(up);
    addValue(low);
    addValue(up);
    const RowView row = model.row(i);
    (equation ? equationNonZeros : inequalityNonZeros) += static_cast<long>(row.size());
    for (std::size_t k = 0; k < row.size(); ++k) {
      matrix.add(row.value(k));
      addValue(row.value(k));
    }
  }
}

void ModelSummary::print(std::ostream& os) const {
  os << "sense:               " << sense << "\n"
     << "variables:           " << variables << " (integer " << integers << ")\n"
     << "equations:           " << equations << "\n"
     << "inequalities:        " << twoSided + lowerOnly + upperOnly + freeRows << " (two-sided "
     << twoSided << ", lower only " << lowerOnly << ", upper only " << upperOnly << ", free "
     << freeRows << ")\n"
     << "non-zeros:           objective " << objectiveNonZeros << ", equations " << equationNonZeros
     << ", inequalities " << inequalityNonZeros << "\n"
     << "variable bounds:     free " << freeVariables << ", fixed " << fixed << ", lower only "
     << lowerBounded << ", upper only " << upperBounded << ", both " << bothBounded << ", 0-1 "
     << zeroOne << "\n";
  os << "magnitudes:          matrix ";
  matrix.print(os);
  os << ", objective ";
  objective.print(os);
  os << ", bounds ";
  bounds.print(os);
  os << ", sides ";
  sides.print(os);
  os << "\n"
     << "largest numerator:   " << largestNumerator << "\n"
     << "largest denominator: " << largestDenominator << "\n"
     << "rounded decimals:    " << roundedDecimals << " (values of " << kRoundedDecimalDigits
     << " or more digits within a unit of their last digit of p/q, q <= " << kSimpleDenominator
     << ")\n";
}

}  // namespace lpconv
