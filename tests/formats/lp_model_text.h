#pragma once
// The model as a short text for the LP tests: a line for the objective, one per row and one per
// column, every value exact, so that an expectation is one string.

#include <string>

#include <lpconv/formats/exact_number.h>
#include <lpconv/formats/formats.h>

namespace lpconv::testing {

inline std::string modelText(const Model& m) {
  std::string out = m.sense() == ObjectiveSense::maximize ? "max" : "min";
  if (!m.objectiveName().empty()) out += " " + std::string(m.objectiveName());
  out += ":";
  for (Model::Index j = 0; j < m.columnCount(); ++j) {
    if (!m.objective(j).isZero()) {
      out += " " + exactText(m.objective(j)) + " " + std::string(m.columnName(j));
    }
  }
  if (!m.objectiveConstant().isZero()) out += " const " + exactText(m.objectiveConstant());
  out += "\n";
  for (Model::Index i = 0; i < m.rowCount(); ++i) {
    out += std::string(m.rowName(i)) + ": " + exactText(m.rowLower(i)) + " <=";
    const RowView row = m.row(i);
    for (std::size_t k = 0; k < row.size(); ++k) {
      out += " " + exactText(row.value(k)) + " " + std::string(m.columnName(row.column(k)));
    }
    out += " <= " + exactText(m.rowUpper(i)) + "\n";
  }
  for (Model::Index j = 0; j < m.columnCount(); ++j) {
    out += std::string(m.columnName(j)) + " [" + exactText(m.columnLower(j)) + ", " +
           exactText(m.columnUpper(j)) + "]" + (m.isInteger(j) ? " int" : "") + "\n";
  }
  return out;
}

// Reads LP text; the messages go to `sink`.
inline Model readLpText(const std::string& text, DiagnosticSink& sink) {
  LineSource source = LineSource::fromText("t.lp", text);
  return readLp(source, sink);
}

}  // namespace lpconv::testing
