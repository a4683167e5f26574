#pragma once
// The linear-expression scan: one side of an LP line (or the objective text) becomes a
// coefficient row and a constant. It is a character scan over the normalised text, not a
// grammar; its sign handling, implicit coefficients and end rule are the converter's behaviour.

#include <string>
#include <string_view>

#include <lpconv/converter/sparse_row.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

// One scanned side: the coefficient row over x1..n, the constant, and the text from the first
// relation sign after the expression, trimmed of " \t\n\r\f\v" (empty when there is none).
struct Expression {
  SparseRow row;
  QQ constant;
  std::string rest;
};

// Normalises `text`, skips leading "<", "=" and ">", and scans it. Reports
// "Array: index out of range" for a variable index outside 1..n.
Expression parseExpression(std::string_view text, long n);

}  // namespace lpconv
