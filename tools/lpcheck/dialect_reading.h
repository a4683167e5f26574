#pragma once
// The file as lpconv reads it, through lpconv's own passes, with the line each row, the variable
// count and a failure come from. The passes report failures through the library's failure path;
// here they throw instead, and the line is found by running the failing pass on shorter texts.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <lpconv/converter/lp_model.h>
#include <lpconv/converter/lp_reader.h>

namespace lpcheck {

// Where each line of a text starts, for turning offsets into line numbers.
class LineIndex {
 public:
  explicit LineIndex(std::string_view text);
  // The 1-based line of byte `offset`.
  long lineOf(std::size_t offset) const;
  std::size_t startOf(long line) const { return starts_[static_cast<std::size_t>(line - 1)]; }
  // The line's text without its line feed (a carriage return stays).
  std::string_view text(long line) const;
  long count() const { return static_cast<long>(starts_.size()); }

 private:
  std::string_view text_;
  std::vector<std::size_t> starts_;
};

struct DialectRow {
  long line = 0;
  char group = '=';  // '>', '<' or '='
  lpconv::SparseRow coefficients;
  lpconv::Coefficient rhs;
};

struct DialectFailure {
  std::string message;  // lpconv's message after "*** FAIL: ", or the abort
  long line = 0;        // 0 when it belongs to the file as a whole
  bool aborts = false;  // the process aborts instead of failing (a NaN coefficient)
};

struct DialectReading {
  long variables = 0;
  long variablesLine = 0;       // the line whose first variable gave n
  std::string variablesDigits;  // that variable's digits, as written
  long subjectToLine = 0;       // 0 when there is none
  long sectionLine = 0;         // the line that ended the constraint block; 0 at the end
  long sectionsEndLine = 0;     // the line that ended the last section read; 0 at the end
  lpconv::RowCounts counts;
  lpconv::VariableBounds bounds;
  lpconv::Objective objective;
  bool objectiveFailed = false;  // the objective pass failed: `objective` holds nothing
  std::vector<DialectRow> rows;  // every constraint line, in input order
  std::optional<DialectFailure> failure;
};

// Reads `text` as lpconv reads the file named `argument` (the name appears in one message).
DialectReading readDialect(std::string_view text, const LineIndex& lines,
                           const std::string& argument);

}  // namespace lpcheck
