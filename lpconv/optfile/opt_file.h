#pragma once
// The .opt file as data: the fourteen items the converter writes, read back with the containers'
// own readers, checked for shape, and written again byte for byte.
//
// Layout (each item on its own line; items 3, 7 and 11 are empty lines):
//   1 sense  2 objective  |  4 equations  5 equationRhs  6 "[ ]"  |
//   8 inequalities  9 lower  10 upper  |  12 integers  13 variableLower  14 variableUpper

#include <istream>
#include <ostream>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/vector.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

// The items that hold data, numbered by their place in the file.
enum class OptItem {
  sense = 1,
  objective = 2,
  equations = 4,
  equationRhs = 5,
  reserved = 6,
  inequalities = 8,
  lower = 9,
  upper = 10,
  integers = 12,
  variableLower = 13,
  variableUpper = 14,
};

struct OptFile {
  // -inf: minimise, inf: maximise; empty when the model has no objective.
  Vector<QQ> sense;
  // One row of n coefficients, or no row at all together with an empty sense.
  Matrix<QQ> objective{",", false, false};
  // e x n; one right-hand side per row.
  Matrix<QQ> equations{",", false, false};
  Vector<QQ> equationRhs;
  // Item 6, always the empty array "[ ]".
  Vector<QQ> reserved;
  // r x n, each row meaning lower[i] <= row . x <= upper[i]; -inf and inf stand for no side.
  Matrix<QQ> inequalities{",", false, false};
  Vector<QQ> lower;
  Vector<QQ> upper;
  // n entries, one per variable.
  Vector<long> integers;
  // n entries each; an infinite entry (of either sign) means the variable has no bound there.
  Vector<QQ> variableLower;
  Vector<QQ> variableUpper;
};

// Receives the rows of the equation and inequality matrices while readOptFile reads them, for a
// program that looks at each row once: such rows are not kept, so a file of any size is read in
// the memory of one row. Rows arrive as the matrix reader would store them (a short row that is
// not the last is brought to the column count with zeros); the reference is valid during the
// call only.
class RowObserver {
 public:
  virtual ~RowObserver() = default;
  virtual void row(OptItem item, const Vector<QQ>& row) = 0;
};

// Reads the fourteen items in order with the Vector and Matrix readers and checks their shape:
// the same n in every item that has it, one right-hand side per equation and two sides per
// inequality, a sense of at most one entry that is inf or -inf and an objective row only with a
// sense, an empty item 6, an item where one is due, and nothing but white space after item 14.
// When n is 0 the matrix rows are empty ("[ ]") and the matrix reader keeps none of them; such a
// matrix gets as many empty rows as its sense or sides have entries, so writing it back gives
// the same text.
// With an observer, the rows of items 4 and 8 go to it and `equations` and `inequalities` stay
// without rows; their row counts are still checked against the sides. Without one, everything
// is kept.
// Reports a malformed file through reportFailure with a message beginning "OptFile: " (see
// lpconv/optfile/messages.h) or with the readers' own messages ("Matrix: bad input", "QQ: parse
// error1", ...); throws what the readers throw.
OptFile readOptFile(std::istream& is, RowObserver* observer = nullptr);

// Writes the fourteen items in the converter's layout: each item followed by a line feed, and an
// empty line after items 2, 6 and 10. For a file read by readOptFile without an observer this
// gives the bytes that were read. Returns os.
std::ostream& operator<<(std::ostream& os, const OptFile& file);

}  // namespace lpconv
