#pragma once
// A coefficient row over x1..xn that stores only its non-zero entries. The converter keeps every
// row this way so that memory follows the non-zeros, never rows x n; the output writer expands
// the rows to the dense text form.

#include <vector>

#include <lpconv/numbers/coefficient.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

struct RowEntry {
  long index;         // 1..n
  Coefficient value;  // never zero once the row is finished
};

class SparseRow {
 public:
  // Entries in strictly increasing index order, zeros left out.
  const std::vector<RowEntry>& entries() const { return entries_; }
  bool empty() const { return entries_.empty(); }

  // Sets entry `index` as a scan does: a later assignment to the same index overwrites an
  // earlier one. Entries may arrive in any order until finish() is called.
  void assign(long index, const Coefficient& value) { entries_.push_back({index, value}); }
  void assign(long index, Coefficient&& value) { entries_.push_back({index, std::move(value)}); }

  // Brings assigned entries into index order, keeping the last assignment per index, and drops
  // zeros.
  void finish();

  // Replaces the value of the entry at `position` (in assignment order, before finish()): a later
  // assignment to its index, made without adding an entry.
  void reassign(std::size_t position, const Coefficient& value) {
    entries_[position].value = value;
  }
  void reassign(std::size_t position, Coefficient&& value) {
    entries_[position].value = std::move(value);
  }
  std::size_t size() const { return entries_.size(); }

  void clear() { entries_.clear(); }
  // Room for `count` assignments, so that a scan grows the row once.
  void reserve(std::size_t count) { entries_.reserve(count); }

  // this = this - other, entry by entry (QQ subtraction, with its infinity failures).
  void subtract(const SparseRow& other);

  // The vector equality of the inequality pairing: every entry differs by at most 1/10^9.
  friend bool equalWithinTolerance(const SparseRow& a, const SparseRow& b);
  // Exact equality of the stored entries (field by field, no tolerance).
  friend bool operator==(const SparseRow& a, const SparseRow& b);

 private:
  std::vector<RowEntry> entries_;
};

}  // namespace lpconv
