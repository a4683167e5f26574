#include "dialect_model.h"

#include <cstdint>
#include <string>
#include <vector>

#include <lpconv/converter/inequality_pairing.h>

namespace lpcheck {

namespace {

std::vector<lpconv::ModelEntry> entriesOf(const lpconv::SparseRow& row) {
  std::vector<lpconv::ModelEntry> entries;
  entries.reserve(row.entries().size());
  for (const auto& e : row.entries()) {
    entries.push_back({static_cast<lpconv::Model::Index>(e.index - 1), e.value});
  }
  return entries;
}

bool isPlusInfinity(const lpconv::QQ& q) { return q.isInf && q.isPositive; }

}  // namespace

std::optional<lpconv::Model> dialectModel(const DialectReading& reading) {
  if (reading.failure || reading.variables > kMaxDialectColumns) return std::nullopt;
  lpconv::Model model;
  for (long j = 1; j <= reading.variables; ++j) {
    const lpconv::Model::Index column = model.addColumn("x" + std::to_string(j));
    const auto& bounds = reading.bounds.at(j);
    if (!isPlusInfinity(bounds.lower)) model.setColumnLower(column, bounds.lower);
    model.setColumnUpper(column, bounds.upper);
  }
  if (reading.objective.present) {
    model.setSense(reading.objective.minimise ? lpconv::ObjectiveSense::minimize
                                              : lpconv::ObjectiveSense::maximize);
    for (const auto& e : reading.objective.row.entries()) {
      model.setObjective(static_cast<lpconv::Model::Index>(e.index - 1), e.value);
    }
  }

  // The groups as lpconv files them, and the line of each filed row.
  lpconv::Constraints constraints;
  std::vector<long> greaterLines;
  std::vector<long> lessLines;
  std::vector<long> equationLines;
  for (const DialectRow& row : reading.rows) {
    lpconv::ConstraintRow filed{row.coefficients, row.rhs};
    if (row.group == '>') {
      constraints.greaterEqual.push_back(std::move(filed));
      greaterLines.push_back(row.line);
    } else if (row.group == '<') {
      constraints.lessEqual.push_back(std::move(filed));
      lessLines.push_back(row.line);
    } else {
      constraints.equations.push_back(std::move(filed));
      equationLines.push_back(row.line);
    }
  }
  long rowNumber = 0;
  const auto addRow = [&](const lpconv::SparseRow& coefficients, const lpconv::Coefficient& lower,
                          const lpconv::Coefficient& upper, long line) {
    std::vector<lpconv::ModelEntry> entries = entriesOf(coefficients);
    const lpconv::Model::Index i =
        model.addRow("r" + std::to_string(++rowNumber), entries, lower, upper);
    model.setRowLine(i, line);
  };
  for (std::size_t k = 0; k < constraints.equations.size(); ++k) {
    const auto& row = constraints.equations[k];
    addRow(row.coefficients, row.rhs, row.rhs, equationLines[k]);
  }
  // A merged row takes the line of its ">=" row; a "<=" row left over keeps its own.
  const auto lineOf = [&](const lpconv::SparseRow* coefficients) {
    // The pairing hands out addresses into the groups: the position follows from the address.
    const auto in = [&](const std::vector<lpconv::ConstraintRow>& group,
                        const std::vector<long>& lines) -> long {
      if (group.empty()) return 0;
      const auto first = reinterpret_cast<std::uintptr_t>(&group.front().coefficients);
      const auto at = reinterpret_cast<std::uintptr_t>(coefficients);
      if (at < first) return 0;
      const std::size_t k = (at - first) / sizeof(lpconv::ConstraintRow);
      return k < group.size() && &group[k].coefficients == coefficients ? lines[k] : 0;
    };
    const long line = in(constraints.greaterEqual, greaterLines);
    return line != 0 ? line : in(constraints.lessEqual, lessLines);
  };
  for (const lpconv::InequalityRow& row : lpconv::pairInequalities(constraints)) {
    addRow(*row.coefficients, *row.lower, *row.upper, lineOf(row.coefficients));
  }
  return model;
}

}  // namespace lpcheck
