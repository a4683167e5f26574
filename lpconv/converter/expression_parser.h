#pragma once
// The linear-expression scan: one side of an LP line (or the objective text) becomes a
// coefficient row and a constant. It is a character scan over the normalised text, not a
// grammar; its sign handling, implicit coefficients and end rule are the converter's behaviour.

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include <lpconv/converter/sparse_row.h>
#include <lpconv/numbers/coefficient.h>

namespace lpconv {

// One scanned side: the coefficient row over x1..n, the constant, and the text from the first
// relation sign after the expression, trimmed of " \t\n\r\f\v" (empty when there is none).
struct Expression {
  SparseRow row;
  Coefficient constant;
  std::string rest;
};

// Scans one expression after another, reusing its text buffer and the storage of the results it
// is given, so that a run over many lines allocates only the rows it keeps.
class ExpressionScanner {
 public:
  // Normalises `text`, skips leading "<", "=" and ">", and scans it into `out`, whose row,
  // constant and rest are replaced. `text` must not point into `out`. Reports
  // "Array: index out of range" for a variable index outside 1..n.
  void scan(std::string_view text, long n, Expression& out);
  // The same for the text before + after, without joining them first.
  void scanJoined(std::string_view before, std::string_view after, long n, Expression& out);

 private:
  // From this many mentions of variables on, a row is long: it keeps each index once.
  static constexpr std::size_t kLongRow = std::size_t{1} << 16;
  // From this length on, the normalised text is given back after the scan.
  static constexpr std::size_t kLongText = std::size_t{1} << 20;

  std::string normalised_;
  // For long rows over few variables: 1 + the entry of each index, 0 for none; all 0 between scans.
  std::vector<std::uint32_t> position_;
};

// One expression scanned on its own, as ExpressionScanner::scan does it.
Expression parseExpression(std::string_view text, long n);

}  // namespace lpconv
