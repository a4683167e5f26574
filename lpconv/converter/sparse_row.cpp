#include <lpconv/converter/sparse_row.h>

#include <algorithm>
#include <array>
#include <cstdint>

namespace lpconv {

namespace {
constexpr std::size_t kInsertionSortLimit = 64;
constexpr unsigned kArrivalBits = 6;  // arrivals 0..63 of a short row
constexpr std::uint64_t kArrivalMask = (std::uint64_t{1} << kArrivalBits) - 1;
constexpr long kMaxKeyIndex = (1L << (63 - kArrivalBits)) - 1;
}  // namespace

namespace {

// Moves every entry to its place: position `at` receives the entry that was at sourceOf(at).
// Follows the permutation's cycles, so no second row is built; `placed` holds one cleared flag
// per entry.
template <typename SourceOf, typename Placed>
void permute(std::vector<RowEntry>& entries, SourceOf sourceOf, Placed& placed) {
  for (std::size_t start = 0; start < entries.size(); ++start) {
    if (placed[start]) continue;
    RowEntry carried = std::move(entries[start]);
    std::size_t at = start;
    for (;;) {
      placed[at] = true;
      const std::size_t from = sourceOf(at);
      if (from == start) break;
      entries[at] = std::move(entries[from]);
      at = from;
    }
    entries[at] = std::move(carried);
  }
}

// Over entries in index order: keeps the last of each run of one index, unless it is zero.
void keepLastNonZero(std::vector<RowEntry>& entries) {
  std::size_t out = 0;
  const std::size_t size = entries.size();
  for (std::size_t i = 0; i < size; ++i) {
    const bool overwritten = i + 1 < size && entries[i + 1].index == entries[i].index;
    if (overwritten || entries[i].value.isZero()) continue;
    if (out != i) entries[out] = std::move(entries[i]);
    ++out;
  }
  entries.resize(out);
}

}  // namespace

void SparseRow::finish() {
  const bool ordered = std::adjacent_find(entries_.begin(), entries_.end(),
                                          [](const RowEntry& a, const RowEntry& b) {
                                            return a.index >= b.index;
                                          }) == entries_.end();
  if (ordered) {
    keepLastNonZero(entries_);
    return;
  }
  const std::size_t size = entries_.size();
  const bool shortKeys = size <= kInsertionSortLimit &&
                         std::all_of(entries_.begin(), entries_.end(), [](const RowEntry& e) {
                           return e.index >= 0 && e.index <= kMaxKeyIndex;
                         });
  // The entries follow sorted (index, arrival) keys; the arrival breaks ties, so the last
  // assignment of an index ends its run.
  if (shortKeys) {
    // Short rows (the usual case) sort without allocating: small keys sorted by insertion.
    std::array<std::uint64_t, kInsertionSortLimit> keys;
    for (std::size_t i = 0; i < size; ++i) {
      keys[i] = static_cast<std::uint64_t>(entries_[i].index) << kArrivalBits | i;
    }
    for (std::size_t i = 1; i < size; ++i) {
      const std::uint64_t key = keys[i];
      std::size_t j = i;
      for (; j > 0 && keys[j - 1] > key; --j) keys[j] = keys[j - 1];
      keys[j] = key;
    }
    std::array<bool, kInsertionSortLimit> placed{};
    permute(
        entries_, [&keys](std::size_t at) { return keys[at] & kArrivalMask; }, placed);
  } else {
    std::vector<std::pair<long, std::size_t>> keys(size);
    for (std::size_t i = 0; i < size; ++i) keys[i] = {entries_[i].index, i};
    std::sort(keys.begin(), keys.end());
    std::vector<bool> placed(size);
    permute(
        entries_, [&keys](std::size_t at) { return keys[at].second; }, placed);
  }
  keepLastNonZero(entries_);
}

void SparseRow::subtract(const SparseRow& other) {
  if (other.entries_.empty()) return;
  std::vector<RowEntry> result;
  result.reserve(entries_.size() + other.entries_.size());
  auto a = entries_.begin();
  auto b = other.entries_.begin();
  const Coefficient zero;
  while (a != entries_.end() || b != other.entries_.end()) {
    if (b == other.entries_.end() || (a != entries_.end() && a->index < b->index)) {
      result.push_back(std::move(*a));
      ++a;
    } else if (a == entries_.end() || b->index < a->index) {
      result.push_back({b->index, lpconv::subtract(zero, b->value)});
      ++b;
    } else {
      Coefficient difference = lpconv::subtract(a->value, b->value);
      if (!difference.isZero()) result.push_back({a->index, std::move(difference)});
      ++a;
      ++b;
    }
  }
  entries_ = std::move(result);
}

bool equalWithinTolerance(const SparseRow& a, const SparseRow& b) {
  const Coefficient zero;
  auto i = a.entries_.begin();
  auto j = b.entries_.begin();
  while (i != a.entries_.end() || j != b.entries_.end()) {
    if (j == b.entries_.end() || (i != a.entries_.end() && i->index < j->index)) {
      if (!withinTolerance(i->value, zero)) return false;
      ++i;
    } else if (i == a.entries_.end() || j->index < i->index) {
      if (!withinTolerance(zero, j->value)) return false;
      ++j;
    } else {
      if (!withinTolerance(i->value, j->value)) return false;
      ++i;
      ++j;
    }
  }
  return true;
}

bool operator==(const SparseRow& a, const SparseRow& b) {
  if (a.entries_.size() != b.entries_.size()) return false;
  for (std::size_t k = 0; k < a.entries_.size(); ++k) {
    if (a.entries_[k].index != b.entries_[k].index) return false;
    if (!identical(a.entries_[k].value, b.entries_[k].value)) return false;
  }
  return true;
}

}  // namespace lpconv
