#include "converter/inequality_pairing.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <algorithm>
#include <set>

namespace lpconv {

namespace {

// Entries at or beyond 2^600 (or infinite) keep a row out of the weighted-sum index: their sums
// would lose the tolerance in rounding. Such rows are searched one by one.
constexpr std::size_t hugeBits = 600;

// Inline coefficients stay below 2^62; only the QQ form can be huge.
std::size_t integerBits(const Coefficient& c) {
  if (c.isInline()) return 0;
  if (c.big().isInf) return std::numeric_limits<std::size_t>::max();
  return mpz_sizeinbase(c.big().ganze.value, 2);
}

// A fixed pseudo-random weight in [1, 2) per variable index, so no table of n weights is needed.
double weightOf(long index) {
  std::uint64_t z = static_cast<std::uint64_t>(index) + 0x9E3779B97F4A7C15ULL;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
  z ^= z >> 31;
  return 1.0 + static_cast<double>(z >> 11) * 0x1.0p-53;
}

struct Projection {
  bool indexable = true;    // no entry is infinite or at least 2^600: the row goes into the index
  bool searchIndex = true;  // a row of the index may equal it
  bool searchHuge = false;  // a row outside the index may equal it
  double sum = 0;           // sum of weight * entry
  double magnitude = 0;     // sum of |weight * entry|
};

Projection project(const SparseRow& row) {
  Projection p;
  for (const RowEntry& e : row.entries()) {
    const std::size_t bits = integerBits(e.value);
    if (bits > hugeBits) p.indexable = false;
    if (bits > hugeBits + 1) p.searchIndex = false;
    if (bits >= hugeBits) p.searchHuge = true;
    if (!p.searchIndex) continue;
    const double term = weightOf(e.index) * approximate(e.value);
    p.sum += term;
    p.magnitude += std::fabs(term);
  }
  return p;
}

struct Group {
  const SparseRow* row;
  std::set<long> positions;  // current positions of the identical "<=" rows of this group
};

class LessEqualIndex {
 public:
  explicit LessEqualIndex(const std::vector<ConstraintRow>& rows) : groupOf_(rows.size()) {
    std::vector<std::pair<double, std::size_t>> keyed;  // (weighted sum, row id)
    keyed.reserve(rows.size());
    for (std::size_t id = 0; id < rows.size(); ++id) {
      const SparseRow& row = rows[id].coefficients;
      maxEntries_ = std::max(maxEntries_, row.entries().size());
      const Projection p = project(row);
      if (p.indexable) {
        keyed.emplace_back(p.sum, id);
      } else {
        groupOf_[id] = groupAmong(hugeGroups_, row);
      }
    }
    // Identical rows have identical sums: group them within each run of equal sums.
    std::sort(keyed.begin(), keyed.end());
    for (std::size_t from = 0; from < keyed.size();) {
      std::size_t to = from;
      while (to < keyed.size() && keyed[to].first == keyed[from].first) ++to;
      std::vector<std::size_t> runGroups;
      for (std::size_t k = from; k < to; ++k) {
        const std::size_t id = keyed[k].second;
        const std::size_t before = runGroups.size();
        groupOf_[id] = groupAmong(runGroups, rows[id].coefficients);
        if (runGroups.size() != before) index_.emplace_back(keyed[from].first, groupOf_[id]);
      }
      from = to;
    }
    order_.resize(rows.size());
    for (std::size_t id = 0; id < rows.size(); ++id) {
      order_[id] = id;
      groups_[groupOf_[id]].positions.insert(static_cast<long>(id));
    }
  }

  // The position of the first current row equal to `row` within the tolerance, or -1.
  long findFirstEqual(const SparseRow& row) {
    const Projection p = project(row);
    long best = -1;
    const auto consider = [&](std::size_t g) {
      const Group& group = groups_[g];
      if (group.positions.empty()) return;
      const long first = *group.positions.begin();
      if (best >= 0 && first >= best) return;
      if (equalWithinTolerance(*group.row, row)) best = first;
    };
    if (p.searchIndex) {
      // Rows within the tolerance differ in at most this many entries, each by 1/10^9 at most;
      // the second term covers the rounding of both sums.
      const double reach = static_cast<double>(row.entries().size() + maxEntries_);
      const double bound =
          2e-9 * reach * (1 + 1e-6) + 1e-15 * (reach + 4) * (p.magnitude + 1 + 2e-9 * reach);
      auto it = std::lower_bound(index_.begin(), index_.end(),
                                 std::make_pair(p.sum - bound, std::size_t{0}));
      for (; it != index_.end() && it->first <= p.sum + bound; ++it) consider(it->second);
    }
    if (p.searchHuge) {
      for (const std::size_t g : hugeGroups_) consider(g);
    }
    return best;
  }

  // Removes the row at `position`: the current last row moves into its place.
  void remove(long position) {
    const long last = static_cast<long>(order_.size()) - 1;
    const std::size_t id = order_[static_cast<std::size_t>(position)];
    groups_[groupOf_[id]].positions.erase(position);
    if (position != last) {
      const std::size_t lastId = order_[static_cast<std::size_t>(last)];
      Group& moved = groups_[groupOf_[lastId]];
      moved.positions.erase(last);
      moved.positions.insert(position);
      order_[static_cast<std::size_t>(position)] = lastId;
    }
    order_.pop_back();
  }

  std::size_t idAt(long position) const { return order_[static_cast<std::size_t>(position)]; }
  const std::vector<std::size_t>& order() const { return order_; }

 private:
  // The group among `candidates` whose row is identical to `row`; a new one (added to
  // `candidates`) when there is none.
  std::size_t groupAmong(std::vector<std::size_t>& candidates, const SparseRow& row) {
    for (const std::size_t g : candidates) {
      if (*groups_[g].row == row) return g;
    }
    groups_.push_back({&row, {}});
    candidates.push_back(groups_.size() - 1);
    return groups_.size() - 1;
  }

  std::vector<Group> groups_;
  std::vector<std::pair<double, std::size_t>> index_;  // (weighted sum, group), ascending
  std::vector<std::size_t> hugeGroups_;
  std::vector<std::size_t> groupOf_;  // "<=" row id -> group
  std::vector<std::size_t> order_;    // position -> "<=" row id
  std::size_t maxEntries_ = 0;
};

}  // namespace

std::vector<InequalityRow> pairInequalities(const LpModel& model) {
  std::vector<InequalityRow> merged;
  merged.reserve(model.greaterEqual.size() + model.lessEqual.size());
  LessEqualIndex lessEqual(model.lessEqual);
  for (const ConstraintRow& row : model.greaterEqual) {
    const long position = lessEqual.findFirstEqual(row.coefficients);
    const QQ* upper = &QQ::infinity();
    if (position >= 0) {
      upper = &model.lessEqual[lessEqual.idAt(position)].rhs;
      lessEqual.remove(position);
    }
    merged.push_back({&row.coefficients, &row.rhs, upper});
  }
  for (const std::size_t id : lessEqual.order()) {
    const ConstraintRow& row = model.lessEqual[id];
    merged.push_back({&row.coefficients, &QQ::minusInfinity(), &row.rhs});
  }
  return merged;
}

std::vector<InequalityRow> pairInequalitiesDirectly(const LpModel& model) {
  std::vector<InequalityRow> merged;
  std::vector<const ConstraintRow*> lessEqual;
  for (const ConstraintRow& row : model.lessEqual) lessEqual.push_back(&row);
  for (const ConstraintRow& row : model.greaterEqual) {
    const QQ* upper = &QQ::infinity();
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
    merged.push_back({&row->coefficients, &QQ::minusInfinity(), &row->rhs});
  }
  return merged;
}

}  // namespace lpconv
