#pragma once
// The linear-expression scan: one side of an LP line (or the objective text) becomes a
// coefficient row and a constant. It is a character scan over the normalised text, not a
// grammar; its sign handling, implicit coefficients and end rule are the converter's behaviour.

#include <string>
#include <string_view>

#include <lpconv/converter/sparse_row.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

// Normalises `text`, skips leading "<", "=" and ">", and scans it into `row` (over x1..n) and
// `constant` (both reset first). Returns the text from the first relation sign after the
// expression, trimmed of " \t\n\r\f\v"; empty when the text holds no relation sign there.
// Reports "Array: index out of range" for a variable index outside 1..n.
std::string parseExpression(std::string_view text, long n, QQ& constant, SparseRow& row);

// base-10 string-to-integer (C strtol with base 10) on `text`: leading white space, a sign,
// digits; saturates at the long range; 0 when no digits follow.
long readIndex(const char* text);

// Every index the converter addresses must lie in 1..n.
void checkIndex(long index, long n);

}  // namespace lpconv
