#include <lpconv/converter/inequality_pairing.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

namespace lpconv {

namespace {

// Rows are indexed by a weighted sum of their finite entries in long double, next to a hash of
// where their infinite entries stand: rows within 1/10^9 of each other have the same infinities
// and sums within a small, computable distance. LP text cannot produce finite entries beyond
// 2^1030; entries from 2^16000 on would make the sums overflow, so rows holding them are searched
// one by one instead.
const dbl_t kHugeEntry = std::ldexp(dbl_t{1}, 16000);

// A fixed pseudo-random weight in [1, 2) per variable index, so no table of n weights is needed.
std::uint64_t mix(std::uint64_t z) {
  z += 0x9E3779B97F4A7C15ULL;
  z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ULL;
  z = (z ^ (z >> 27)) * 0x94D049BB133111EBULL;
  return z ^ (z >> 31);
}

dbl_t weightOf(long index) {
  return 1 + static_cast<dbl_t>(mix(static_cast<std::uint64_t>(index)) >> 11) * 0x1.0p-53L;
}

struct Projection {
  std::uint64_t infinities = 0;  // hash of the indices and signs of the infinite entries
  dbl_t sum = 0;                 // sum of weight * entry over the finite entries
  dbl_t magnitude = 0;           // sum of |weight * entry|
  bool indexable = true;         // no finite entry reaches kHugeEntry: the row goes into the index
  bool searchIndex = true;       // no finite entry reaches 2 * kHugeEntry: an indexed row may match
  bool searchHuge = false;       // an entry reaches kHugeEntry / 2: a row outside may match
};

Projection project(const SparseRow& row) {
  Projection p;
  for (const RowEntry& e : row.entries()) {
    const Coefficient& v = e.value;
    if (!v.isInline() && v.big().isInf) {
      p.infinities += mix(static_cast<std::uint64_t>(e.index) * 2 + (v.big().isPositive ? 1 : 0));
      continue;
    }
    const dbl_t value = approximate(v);
    const dbl_t size = std::fabs(value);
    if (!(size < kHugeEntry)) p.indexable = false;
    if (!(size < 2 * kHugeEntry)) p.searchIndex = false;
    if (!(size < kHugeEntry / 2)) p.searchHuge = true;
    if (!p.searchIndex) continue;
    const dbl_t term = weightOf(e.index) * value;
    p.sum += term;
    p.magnitude += std::fabs(term);
  }
  return p;
}

// Position in the index: infinity pattern first, then the weighted sum.
struct IndexKey {
  std::uint64_t infinities;
  dbl_t sum;
  friend bool operator<(const IndexKey& a, const IndexKey& b) {
    return a.infinities != b.infinities ? a.infinities < b.infinities : a.sum < b.sum;
  }
  friend bool operator==(const IndexKey& a, const IndexKey& b) {
    return a.infinities == b.infinities && a.sum == b.sum;
  }
};

// What a search reads of a group of identical "<=" rows, kept small: searches visit groups in no
// order that the caches could follow.
struct Group {
  const SparseRow* row;
  long first = -1;  // the lowest current position of the group's rows; -1 when none is left
};

class LessEqualIndex {
 public:
  explicit LessEqualIndex(const std::vector<ConstraintRow>& rows) : groupOf_(rows.size()) {
    std::vector<std::pair<IndexKey, std::size_t>> keyed;  // (key, row id)
    keyed.reserve(rows.size());
    for (std::size_t id = 0; id < rows.size(); ++id) {
      const SparseRow& row = rows[id].coefficients;
      maxEntries_ = std::max(maxEntries_, row.entries().size());
      const Projection p = project(row);
      if (p.indexable) {
        keyed.push_back({{p.infinities, p.sum}, id});
      } else {
        groupOf_[id] = groupAmong(hugeGroups_, row);
      }
    }
    // Identical rows have identical keys: group them within each run of equal keys.
    std::sort(keyed.begin(), keyed.end(), [](const auto& a, const auto& b) {
      return a.first < b.first || (a.first == b.first && a.second < b.second);
    });
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
    positions_.resize(groups_.size());
    for (std::size_t id = 0; id < rows.size(); ++id) {
      order_[id] = id;
      positions_[groupOf_[id]].insert(static_cast<long>(id));
    }
    for (std::size_t g = 0; g < groups_.size(); ++g) groups_[g].first = *positions_[g].begin();
  }

  // Where the search for a row starts: its projection, the reach of its sums and the first index
  // entry at or above its lowest possible key.
  struct Search {
    Projection p;
    dbl_t bound = 0;
    std::size_t start = 0;
  };

  // The searches of all `rows`, found in one sweep over the index in key order instead of one
  // binary search each: the index is larger than the caches, and its entries are visited in
  // order.
  std::vector<Search> prepare(const std::vector<ConstraintRow>& rows) const {
    std::vector<Search> searches(rows.size());
    std::vector<std::pair<IndexKey, std::size_t>> lowest;  // (lowest key, row)
    lowest.reserve(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      Search& s = searches[i];
      s.p = project(rows[i].coefficients);
      if (!s.p.searchIndex) continue;
      // Rows within the tolerance differ in at most this many entries, each by 1/10^9 at most;
      // the second term covers the rounding of both sums.
      const dbl_t reach = static_cast<dbl_t>(rows[i].coefficients.entries().size() + maxEntries_);
      s.bound =
          2e-9L * reach * (1 + 1e-6L) + 1e-17L * (reach + 4) * (s.p.magnitude + 1 + 2e-9L * reach);
      lowest.push_back({{s.p.infinities, s.p.sum - s.bound}, i});
    }
    std::sort(lowest.begin(), lowest.end(),
              [](const auto& a, const auto& b) { return a.first < b.first; });
    std::size_t at = 0;
    for (const auto& [key, i] : lowest) {
      while (at < index_.size() && index_[at].first < key) ++at;
      searches[i].start = at;
    }
    return searches;
  }

  // The position of the first current row equal to `row` within the tolerance, or -1.
  long findFirstEqual(const SparseRow& row, const Search& search) {
    const Projection& p = search.p;
    long best = -1;
    const auto consider = [&](std::size_t g) {
      const Group& group = groups_[g];
      if (group.first < 0 || (best >= 0 && group.first >= best)) return;
      if (equalWithinTolerance(*group.row, row)) best = group.first;
    };
    if (p.searchIndex) {
      for (std::size_t at = search.start;
           at < index_.size() && index_[at].first.infinities == p.infinities &&
           index_[at].first.sum <= p.sum + search.bound;
           ++at) {
        consider(index_[at].second);
      }
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
    positions_[groupOf_[id]].erase(position);
    updateFirst(groupOf_[id]);
    if (position != last) {
      const std::size_t lastId = order_[static_cast<std::size_t>(last)];
      std::set<long>& moved = positions_[groupOf_[lastId]];
      moved.erase(last);
      moved.insert(position);
      updateFirst(groupOf_[lastId]);
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
    groups_.push_back({&row});
    candidates.push_back(groups_.size() - 1);
    return groups_.size() - 1;
  }

  void updateFirst(std::size_t g) {
    groups_[g].first = positions_[g].empty() ? -1 : *positions_[g].begin();
  }

  std::vector<Group> groups_;
  std::vector<std::set<long>> positions_;                // current positions of each group's rows
  std::vector<std::pair<IndexKey, std::size_t>> index_;  // (key, group), ascending
  std::vector<std::size_t> hugeGroups_;
  std::vector<std::size_t> groupOf_;  // "<=" row id -> group
  std::vector<std::size_t> order_;    // position -> "<=" row id
  std::size_t maxEntries_ = 0;
};

}  // namespace

std::vector<InequalityRow> pairInequalities(const Constraints& model) {
  std::vector<InequalityRow> merged;
  merged.reserve(model.greaterEqual.size() + model.lessEqual.size());
  LessEqualIndex lessEqual(model.lessEqual);
  const auto searches = lessEqual.prepare(model.greaterEqual);
  for (std::size_t i = 0; i < model.greaterEqual.size(); ++i) {
    const ConstraintRow& row = model.greaterEqual[i];
    const long position = lessEqual.findFirstEqual(row.coefficients, searches[i]);
    const Coefficient* upper = &Coefficient::infinity();
    if (position >= 0) {
      upper = &model.lessEqual[lessEqual.idAt(position)].rhs;
      lessEqual.remove(position);
    }
    merged.push_back({&row.coefficients, &row.rhs, upper});
  }
  for (const std::size_t id : lessEqual.order()) {
    const ConstraintRow& row = model.lessEqual[id];
    merged.push_back({&row.coefficients, &Coefficient::minusInfinity(), &row.rhs});
  }
  return merged;
}

}  // namespace lpconv
