#pragma once
// Merging the ">=" and "<=" rows into two-sided inequalities.

#include <vector>

#include <lpconv/converter/lp_model.h>

namespace lpconv {

// The merged system, in output order. For every ">=" row i in input order, the first "<=" row in
// the current order whose coefficients equal row i within 1/10^9 per entry gives the upper side
// and is removed by moving the current last "<=" row into its place; a ">=" row without a twin
// gets +infinity. The "<=" rows left over follow in their final order, with lower side -infinity.
//
// Candidates are found through an ordered index of a weighted sum of each row, so ordinary
// inputs pair in O(rows log rows); every candidate is confirmed with the exact tolerance test.
// The returned rows point into `model` and the shared infinities, which must outlive them.
std::vector<InequalityRow> pairInequalities(const Constraints& model);

}  // namespace lpconv
