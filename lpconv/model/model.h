#pragma once
// A linear program as exact sparse data: named columns with bounds and integrality, an objective
// with a sense, a name and a constant, and named rows lower <= a . x <= upper. Memory grows with
// the nonzeros and the names, never with rows x columns.
//
// Columns and rows are numbered from 0 in the order they were added. A column starts with the
// bounds 0 and +inf and continuous; a row side that is absent is -inf (lower) or +inf (upper).
// Rows keep their entries sorted by column, without zeros and without a column twice.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <lpconv/model/name_table.h>
#include <lpconv/numbers/coefficient.h>

namespace lpconv {

enum class ObjectiveSense { minimize, maximize };

// One coefficient of a row (index = column) or of a column (index = row).
struct ModelEntry {
  std::uint32_t index;
  Coefficient value;
};

// The entries of one row: columns ascending, values non-zero.
class RowView {
 public:
  RowView(const std::uint32_t* columns, const std::uint64_t* values,
          const std::vector<Coefficient>* table, std::size_t size)
      : columns_(columns), values_(values), table_(table), size_(size) {}
  std::size_t size() const { return size_; }
  bool empty() const { return size_ == 0; }
  std::uint32_t column(std::size_t k) const { return columns_[k]; }
  // The value, unpacked from the model's compact storage (see packed_value.h).
  Coefficient value(std::size_t k) const;

 private:
  const std::uint32_t* columns_;
  const std::uint64_t* values_;
  const std::vector<Coefficient>* table_;
  std::size_t size_;
};

class Model {
 public:
  using Index = std::uint32_t;

  // --- Columns ---
  // Adds a column with a name no column has yet (checked by the caller through findColumn).
  Index addColumn(std::string_view name);
  // The column of that name, added when there is none.
  Index findOrAddColumn(std::string_view name);
  std::optional<Index> findColumn(std::string_view name) const { return columns_.find(name); }
  Index columnCount() const { return static_cast<Index>(columns_.size()); }
  std::string_view columnName(Index j) const { return columns_.name(j); }

  const Coefficient& columnLower(Index j) const { return columnData_[j].lower; }
  const Coefficient& columnUpper(Index j) const { return columnData_[j].upper; }
  void setColumnLower(Index j, Coefficient value) { columnData_[j].lower = std::move(value); }
  void setColumnUpper(Index j, Coefficient value) { columnData_[j].upper = std::move(value); }
  bool isInteger(Index j) const { return columnData_[j].integer; }
  void setInteger(Index j, bool integer) { columnData_[j].integer = integer; }

  // --- Objective ---
  ObjectiveSense sense() const { return sense_; }
  void setSense(ObjectiveSense sense) { sense_ = sense; }
  std::string_view objectiveName() const { return objectiveName_; }
  void setObjectiveName(std::string_view name) { objectiveName_ = name; }
  const Coefficient& objectiveConstant() const { return objectiveConstant_; }
  void setObjectiveConstant(Coefficient value) { objectiveConstant_ = std::move(value); }
  // The objective coefficient of column j (0 when none was set).
  const Coefficient& objective(Index j) const { return columnData_[j].objective; }
  void setObjective(Index j, Coefficient value) { columnData_[j].objective = std::move(value); }

  // --- Rows ---
  Index rowCount() const { return static_cast<Index>(rowLower_.size()); }
  std::string_view rowName(Index i) const { return rows_.name(i); }
  std::optional<Index> findRow(std::string_view name) const { return rows_.find(name); }
  // Adds a row with a name no row has yet. The entries may come in any order and name a column
  // twice (the values are added); zeros are dropped. `entries` is reordered in the process.
  Index addRow(std::string_view name, std::span<ModelEntry> entries, Coefficient lower,
               Coefficient upper);
  const Coefficient& rowLower(Index i) const { return rowLower_[i]; }
  const Coefficient& rowUpper(Index i) const { return rowUpper_[i]; }
  void setRowLower(Index i, Coefficient value) { rowLower_[i] = std::move(value); }
  void setRowUpper(Index i, Coefficient value) { rowUpper_[i] = std::move(value); }
  // Where the row came from in its file (0 when unknown), for messages about it.
  long rowLine(Index i) const { return rowLine_[i]; }
  void setRowLine(Index i, long line) { rowLine_[i] = line; }

  // Column-wise building, for formats that list the matrix by column: entries appended here
  // (to rows that exist already) join the rows at finishColumns(), which must be called before
  // the rows are read again. A row and column named twice add up, as in addRow.
  void appendColumnEntry(Index row, Index column, Coefficient value);
  void finishColumns();

  RowView row(Index i) const;
  // The number of stored entries over all rows.
  std::size_t nonzeroCount() const { return rowColumns_.size(); }

 private:
  struct ColumnData {
    Coefficient lower;
    Coefficient upper = Coefficient::infinity();
    Coefficient objective;
    bool integer = false;
  };

  NameTable columns_;
  std::vector<ColumnData> columnData_;
  ObjectiveSense sense_ = ObjectiveSense::minimize;
  std::string objectiveName_;
  Coefficient objectiveConstant_;

  NameTable rows_;
  std::vector<Coefficient> rowLower_;
  std::vector<Coefficient> rowUpper_;
  std::vector<long> rowLine_;
  // Compressed rows: the entries of row i are [rowStart_[i], rowStart_[i + 1]). Values are
  // packed words (packed_value.h); those that do not fit a word live in valueTable_.
  std::vector<std::size_t> rowStart_{0};
  std::vector<std::uint32_t> rowColumns_;
  std::vector<std::uint64_t> rowValues_;
  std::vector<Coefficient> valueTable_;

  // Entries appended column-wise, waiting for finishColumns: their rows and packed values, and
  // the runs of consecutive entries of one column (a column and the position its run starts at).
  std::vector<Index> pendingRows_;
  std::vector<std::uint64_t> pendingValues_;
  std::vector<std::pair<Index, std::size_t>> pendingRuns_;
};

}  // namespace lpconv
