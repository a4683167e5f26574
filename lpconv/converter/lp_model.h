#pragma once
// What the passes over an LP file gather: everything the output file is written from. Rows are
// sparse; vectors over x1..n keep only the entries that differ from their default.

#include <map>
#include <vector>

#include <lpconv/converter/sparse_row.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

struct RowCounts {
  long lessEqual = 0;     // rows containing "<="
  long greaterEqual = 0;  // rows containing ">=" (and not "<=")
  long equations = 0;     // rows containing "=" only
};

// The bounds of x1..n; both default to +infinity (a lower +infinity means "no bound stated").
class VariableBounds {
 public:
  struct Pair {
    QQ lower = QQ::infinity();
    QQ upper = QQ::infinity();
  };

  // The bounds of x<index>: the defaults when none were stated. Reading never adds an entry.
  const Pair& at(long index) const {
    static const Pair kDefaults;
    const auto found = stated_.find(index);
    return found == stated_.end() ? kDefaults : found->second;
  }
  void set(long index, QQ lower, QQ upper) {
    Pair& pair = stated_[index];
    pair.lower = std::move(lower);
    pair.upper = std::move(upper);
  }
  // The stated pairs in index order; every other index holds the defaults.
  const std::map<long, Pair>& stated() const { return stated_; }

 private:
  std::map<long, Pair> stated_;
};

// A filed constraint: coefficient row and right-hand side.
struct ConstraintRow {
  SparseRow coefficients;
  Coefficient rhs;
};

// One row of the merged two-sided inequality system: lower <= coefficients . x <= upper.
struct InequalityRow {
  const SparseRow* coefficients;
  const Coefficient* lower;
  const Coefficient* upper;
};

struct Objective {
  bool present = false;  // the text before "Subject To" had a "(Min|Max)...:" header
  bool minimise = false;
  SparseRow row;
};

// The filed constraint rows, each group in input order.
struct Constraints {
  std::vector<ConstraintRow> equations;
  std::vector<ConstraintRow> greaterEqual;
  std::vector<ConstraintRow> lessEqual;
};

struct LpModel {
  long variables = 0;
  RowCounts counts;
  VariableBounds bounds;
  Objective objective;
  Constraints constraints;
};

}  // namespace lpconv
