#pragma once
// The pairing of ">=" with "<=" rows by the direct search over the "<=" rows, as the merge rule
// states it: quadratic, the oracle the indexed pairing is tested against.

#include <vector>

#include <lpconv/converter/lp_model.h>

namespace lpconv::oracle {

inline std::vector<InequalityRow> pairInequalitiesDirectly(const Constraints& model) {
  std::vector<InequalityRow> merged;
  std::vector<const ConstraintRow*> lessEqual;
  for (const ConstraintRow& row : model.lessEqual) lessEqual.push_back(&row);
  for (const ConstraintRow& row : model.greaterEqual) {
    const Coefficient* upper = &Coefficient::infinity();
    for (std::size_t j = 0; j < lessEqual.size(); ++j) {
      if (!equalWithinTolerance(lessEqual[j]->coefficients, row.coefficients)) continue;
      upper = &lessEqual[j]->rhs;
      lessEqual[j] = lessEqual.back();
      lessEqual.pop_back();
      break;
    }
    merged.push_back({&row.coefficients, &row.rhs, upper});
  }
  for (const ConstraintRow* row : lessEqual) {
    merged.push_back({&row->coefficients, &Coefficient::minusInfinity(), &row->rhs});
  }
  return merged;
}

}  // namespace lpconv::oracle
