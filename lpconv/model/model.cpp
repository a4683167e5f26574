#include <lpconv/model/model.h>

#include <algorithm>

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
    rowValues_.push_back(std::move(e->value));
  }
  rowStart_.push_back(rowColumns_.size());
  return i;
}

void Model::appendColumnEntry(Index row, Index column, Coefficient value) {
  pending_.push_back({row, column, std::move(value)});
}

void Model::finishColumns() {
  if (pending_.empty()) return;
  const std::size_t rows = rowCount();
  // Counting sort of the pending entries by row keeps each row's entries in the order they came.
  std::vector<std::size_t> start(rows + 1, 0);
  for (const PendingEntry& p : pending_) ++start[p.row + 1];
  for (std::size_t i = 0; i < rows; ++i) start[i + 1] += start[i];
  std::vector<ModelEntry> byRow(pending_.size(), ModelEntry{0, Coefficient()});
  {
    std::vector<std::size_t> next(start.begin(), start.end() - 1);
    for (PendingEntry& p : pending_) byRow[next[p.row]++] = {p.column, std::move(p.value)};
  }
  pending_.clear();
  pending_.shrink_to_fit();

  std::vector<std::size_t> newStart{0};
  newStart.reserve(rows + 1);
  std::vector<std::uint32_t> newColumns;
  std::vector<Coefficient> newValues;
  newColumns.reserve(rowColumns_.size() + byRow.size());
  newValues.reserve(rowColumns_.size() + byRow.size());
  std::vector<ModelEntry> scratch;
  for (std::size_t i = 0; i < rows; ++i) {
    scratch.clear();
    for (std::size_t k = rowStart_[i]; k < rowStart_[i + 1]; ++k) {
      scratch.push_back({rowColumns_[k], std::move(rowValues_[k])});
    }
    for (std::size_t k = start[i]; k < start[i + 1]; ++k) scratch.push_back(std::move(byRow[k]));
    ModelEntry* end = combine(scratch.data(), scratch.data() + scratch.size());
    for (ModelEntry* e = scratch.data(); e != end; ++e) {
      newColumns.push_back(e->index);
      newValues.push_back(std::move(e->value));
    }
    newStart.push_back(newColumns.size());
  }
  rowStart_ = std::move(newStart);
  rowColumns_ = std::move(newColumns);
  rowValues_ = std::move(newValues);
}

RowView Model::row(Index i) const {
  const std::size_t begin = rowStart_[i];
  return {rowColumns_.data() + begin, rowValues_.data() + begin, rowStart_[i + 1] - begin};
}

}  // namespace lpconv
