#include <lpconv/model/model.h>
#include <lpconv/model/packed_value.h>

#include <algorithm>
#include <cstdint>
#include <utility>

namespace lpconv {

namespace {

// Sorts by index, adds up the values of an index named twice and drops zeros; returns the new
// end.
ModelEntry* combine(ModelEntry* begin, ModelEntry* end) {
  if (!std::is_sorted(begin, end,
                      [](const ModelEntry& a, const ModelEntry& b) { return a.index < b.index; })) {
    std::stable_sort(begin, end,
                     [](const ModelEntry& a, const ModelEntry& b) { return a.index < b.index; });
  }
  ModelEntry* out = begin;
  for (ModelEntry* in = begin; in != end;) {
    ModelEntry* next = in + 1;
    Coefficient sum = std::move(in->value);
    while (next != end && next->index == in->index) {
      sum = add(sum, next->value);
      ++next;
    }
    if (!sum.isZero()) {
      out->index = in->index;
      out->value = std::move(sum);
      ++out;
    }
    in = next;
  }
  return out;
}

// Moves values[k] to place[k] for a permutation `place`. The values bound for the first half
// (rounded up) go to a buffer; the others close up at the front of the array, from where they
// go to their places in the second half, which no value still to move occupies; then the
// buffer fills the first half. `place` is overwritten.
void placeValues(std::vector<std::uint32_t>& place, std::vector<std::uint64_t>& values) {
  const std::size_t n = values.size();
  const std::size_t half = n - n / 2;
  std::vector<std::uint64_t> first(half);
  std::size_t kept = 0;
  for (std::size_t k = 0; k < n; ++k) {
    if (place[k] < half) {
      first[place[k]] = values[k];
    } else {
      values[kept] = values[k];
      place[kept++] = place[k];
    }
  }
  for (std::size_t k = 0; k < kept; ++k) values[place[k]] = values[k];
  for (std::size_t k = 0; k < half; ++k) values[k] = first[k];
}

}  // namespace

Model::Index Model::addColumn(std::string_view name) {
  const Index j = columns_.add(name);
  columnData_.emplace_back();
  return j;
}

Model::Index Model::findOrAddColumn(std::string_view name) {
  if (const auto found = columns_.find(name)) return *found;
  return addColumn(name);
}

Model::Index Model::addRow(std::string_view name, std::span<ModelEntry> entries, Coefficient lower,
                           Coefficient upper) {
  const Index i = rows_.add(name);
  rowLower_.push_back(std::move(lower));
  rowUpper_.push_back(std::move(upper));
  rowLine_.push_back(0);
  ModelEntry* end = combine(entries.data(), entries.data() + entries.size());
  for (ModelEntry* e = entries.data(); e != end; ++e) {
    rowColumns_.push_back(e->index);
    rowValues_.push_back(detail::packValue(e->value, valueTable_));
  }
  rowStart_.push_back(rowColumns_.size());
  return i;
}

void Model::appendColumnEntry(Index row, Index column, Coefficient value) {
  if (value.isZero()) return;
  if (pendingRuns_.empty() || pendingRuns_.back().first != column) {
    pendingRuns_.emplace_back(column, pendingRows_.size());
  }
  pendingRows_.push_back(row);
  pendingValues_.push_back(detail::packValue(value, valueTable_));
}

void Model::finishColumns() {
  if (pendingRows_.empty()) return;
  const std::size_t rows = rowCount();
  // Counting sort by row: each row's entries are its own, then the appended ones in the order
  // they came, which for input listed column by column is already ascending.
  std::vector<std::size_t> start(rows + 1, 0);
  for (std::size_t i = 0; i < rows; ++i) start[i + 1] = rowStart_[i + 1] - rowStart_[i];
  for (const Index r : pendingRows_) ++start[r + 1];
  for (std::size_t i = 0; i < rows; ++i) start[i + 1] += start[i];
  std::vector<std::uint32_t> columns(start[rows]);
  std::vector<std::uint64_t> values;
  std::vector<std::size_t> next(start.begin(), start.end() - 1);
  if (rowColumns_.empty() && start[rows] <= UINT32_MAX) {
    // Only appended entries: each pending row number is replaced by the entry's place, then
    // the values move there within the pending array itself, through a buffer of half its
    // size, so the matrix is never held twice (and the writes stream along the rows).
    for (std::size_t run = 0; run < pendingRuns_.size(); ++run) {
      const Index column = pendingRuns_[run].first;
      const std::size_t end =
          run + 1 < pendingRuns_.size() ? pendingRuns_[run + 1].second : pendingRows_.size();
      for (std::size_t k = pendingRuns_[run].second; k < end; ++k) {
        const std::size_t at = next[pendingRows_[k]]++;
        columns[at] = column;
        pendingRows_[k] = static_cast<Index>(at);
      }
    }
    placeValues(pendingRows_, pendingValues_);
    values = std::move(pendingValues_);
  } else {
    values.resize(start[rows]);
    for (std::size_t i = 0; i < rows; ++i) {
      for (std::size_t k = rowStart_[i]; k < rowStart_[i + 1]; ++k) {
        columns[next[i]] = rowColumns_[k];
        values[next[i]++] = rowValues_[k];
      }
    }
    rowColumns_ = {};
    rowValues_ = {};
    for (std::size_t run = 0; run < pendingRuns_.size(); ++run) {
      const Index column = pendingRuns_[run].first;
      const std::size_t end =
          run + 1 < pendingRuns_.size() ? pendingRuns_[run + 1].second : pendingRows_.size();
      for (std::size_t k = pendingRuns_[run].second; k < end; ++k) {
        const std::size_t at = next[pendingRows_[k]]++;
        columns[at] = column;
        values[at] = pendingValues_[k];
      }
    }
  }
  pendingRows_ = {};
  pendingValues_ = {};
  pendingRuns_ = {};

  // Rows whose columns are not strictly ascending are sorted, their repeated columns added up
  // and zeros dropped; the rows move down over what that removes.
  std::size_t out = 0;
  std::vector<ModelEntry> scratch;
  for (std::size_t i = 0; i < rows; ++i) {
    const std::size_t begin = start[i];
    const std::size_t end = start[i + 1];
    bool ordered = true;
    for (std::size_t k = begin + 1; k < end && ordered; ++k) ordered = columns[k - 1] < columns[k];
    rowStart_[i] = out;
    if (ordered) {
      for (std::size_t k = begin; k < end; ++k, ++out) {
        columns[out] = columns[k];
        values[out] = values[k];
      }
      continue;
    }
    scratch.clear();
    for (std::size_t k = begin; k < end; ++k) {
      scratch.push_back({columns[k], detail::unpackValue(values[k], valueTable_)});
    }
    ModelEntry* last = combine(scratch.data(), scratch.data() + scratch.size());
    for (ModelEntry* e = scratch.data(); e != last; ++e, ++out) {
      columns[out] = e->index;
      values[out] = detail::packValue(e->value, valueTable_);
    }
  }
  rowStart_[rows] = out;
  columns.resize(out);
  values.resize(out);
  rowColumns_ = std::move(columns);
  rowValues_ = std::move(values);
}

RowView Model::row(Index i) const {
  const std::size_t begin = rowStart_[i];
  return {rowColumns_.data() + begin, rowValues_.data() + begin, &valueTable_,
          rowStart_[i + 1] - begin};
}

Coefficient RowView::value(std::size_t k) const { return detail::unpackValue(values_[k], *table_); }

}  // namespace lpconv
