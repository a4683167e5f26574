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

void SparseRow::finish() {
  const bool ordered = std::adjacent_find(entries_.begin(), entries_.end(),
                                          [](const RowEntry& a, const RowEntry& b) {
                                            return a.index >= b.index;
                                          }) == entries_.end();
  const bool shortKeys = entries_.size() <= kInsertionSortLimit &&
                         std::all_of(entries_.begin(), entries_.end(), [](const RowEntry& e) {
                           return e.index >= 0 && e.index <= kMaxKeyIndex;
                         });
  if (!ordered && shortKeys) {
    // Short rows (the usual case) sort without allocating: small (index, arrival) keys are sorted
    // by insertion, then the entries follow their keys around the permutation's cycles. The
    // arrival breaks ties, so the last assignment of an index ends its run.
    const std::size_t size = entries_.size();
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
    std::uint64_t placed = 0;  // bit k: position k holds its final entry
    for (std::size_t start = 0; start < size; ++start) {
      if ((placed >> start & 1) != 0) continue;
      RowEntry carried = std::move(entries_[start]);
      std::size_t at = start;
      for (;;) {
        placed |= std::uint64_t{1} << at;
        const std::size_t from = keys[at] & kArrivalMask;
        if (from == start) break;
        entries_[at] = std::move(entries_[from]);
        at = from;
      }
      entries_[at] = std::move(carried);
    }
    std::size_t out = 0;
    for (std::size_t i = 0; i < size; ++i) {
      const bool overwritten = i + 1 < size && entries_[i + 1].index == entries_[i].index;
      if (overwritten || entries_[i].value.isZero()) continue;
      if (out != i) entries_[out] = std::move(entries_[i]);
      ++out;
    }
    entries_.resize(out);
    return;
  }
  if (!ordered) {
    // Sort small (index, arrival) keys instead of the entries themselves; the arrival breaks
    // ties so that the last assignment of an index comes last.
    std::vector<std::pair<long, std::size_t>> keys(entries_.size());
    for (std::size_t i = 0; i < entries_.size(); ++i) keys[i] = {entries_[i].index, i};
    std::sort(keys.begin(), keys.end());
    std::vector<RowEntry> sorted;
    sorted.reserve(keys.size());
    for (std::size_t k = 0; k < keys.size(); ++k) {
      if (k + 1 < keys.size() && keys[k + 1].first == keys[k].first) continue;
      RowEntry& entry = entries_[keys[k].second];
      if (!entry.value.isZero()) sorted.push_back(std::move(entry));
    }
    entries_ = std::move(sorted);
    return;
  }
  // Already in order: only zeros to drop, in place.
  std::size_t out = 0;
  for (std::size_t i = 0; i < entries_.size(); ++i) {
    if (entries_[i].value.isZero()) continue;
    if (out != i) entries_[out] = std::move(entries_[i]);
    ++out;
  }
  entries_.resize(out);
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
