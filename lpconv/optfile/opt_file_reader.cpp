#include <lpconv/optfile/opt_file.h>

#include <string>
#include <utility>

#include <lpconv/containers/messages.h>
#include <lpconv/optfile/messages.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

namespace lpconv {

namespace {

// What the checks need to know of a matrix, whether its rows were kept or streamed.
struct MatrixShape {
  long rows = 0;
  long columns = 0;
  long lastWidth = 0;
};

// The readers return an empty container, without error, when "[" does not follow; so an item
// that is not there has to be noticed before its reader runs.
void expectItem(std::istream& is, OptItem item) {
  char c = 0;
  skipDelimitersAndComments(is, detail::containerWhitespace(), &c);
  if (!peekChar(is, c) || c != '[') reportFailure(messages::optFileMissing(item));
}

template <typename T>
void readVector(std::istream& is, OptItem item, Vector<T>& vector) {
  expectItem(is, item);
  vector.deserialize(is);
}

MatrixShape keptShape(const Matrix<QQ>& matrix) {
  const long rows = matrix.getRows();
  return {rows, matrix.getColumns(), rows > 0 ? matrix[rows].getDimension() : 0};
}

// The matrix reader's own loop with one reused row: the same text is accepted, the same failures
// are reported at the same place, and the observer sees exactly the rows the matrix reader
// would have stored (leading empty rows become zero rows once a row sets the column count; a
// short row that is not the last is filled up with zeros; all-empty rows make no rows).
MatrixShape streamMatrix(std::istream& is, OptItem item, RowObserver& observer) {
  MatrixShape shape;
  if (is.fail()) reportFailure(messages::kMatrixBadStream);
  if (detail::openBrackets(is) != detail::Opening::elements) return shape;
  const std::string& whitespace = detail::containerWhitespace();
  Vector<QQ> row;
  long pendingEmptyRows = 0;
  char c = 0;
  for (bool last = false; !last;) {
    skipDelimitersAndComments(is, whitespace, &c);
    if (!peekChar(is, c) || c != '[') reportFailure(messages::kMatrixBadInput);
    row.deserialize(is);
    if (is.fail()) reportFailure(messages::kMatrixBadInput);
    const long width = row.getDimension();
    if (width > shape.columns) {
      if (shape.columns != 0) reportFailure(messages::kMatrixRowDimensionMismatch);
      shape.columns = width;
    }
    skipDelimitersAndComments(is, whitespace, &c);
    last = peekChar(is, c) && c == ']';
    if (last) is.get();
    if (shape.columns == 0) {
      ++pendingEmptyRows;
      continue;
    }
    if (pendingEmptyRows > 0) {
      Vector<QQ> zeros;
      zeros.resize(shape.columns, false);
      for (; pendingEmptyRows > 0; --pendingEmptyRows, ++shape.rows) observer.row(item, zeros);
    }
    if (width < shape.columns && !last) {
      row.resize(shape.columns, true);
      for (long j = width + 1; j <= shape.columns; ++j) row[j] = QQ();
    }
    observer.row(item, row);
    ++shape.rows;
    shape.lastWidth = row.getDimension();
  }
  return shape;
}

MatrixShape readMatrix(std::istream& is, OptItem item, Matrix<QQ>& matrix, RowObserver* observer) {
  expectItem(is, item);
  if (observer != nullptr) return streamMatrix(is, item, *observer);
  matrix.deserialize(is);
  return keptShape(matrix);
}

void expectCount(OptItem item, long count, const char* unit, long expected,
                 const std::string& reason) {
  if (count != expected) {
    reportFailure(messages::optFileCount(item, count, unit, std::to_string(expected), reason));
  }
}

void expectWidth(OptItem item, const MatrixShape& shape, long n, OptItem nFrom) {
  if (shape.rows == 0) return;
  if (shape.columns != n) reportFailure(messages::optFileRowWidth(item, shape.columns, n, nFrom));
  if (shape.lastWidth != n) {
    reportFailure(messages::optFileRowWidth(item, shape.lastWidth, n, nFrom));
  }
}

std::string onePerRowOf(OptItem item) {
  return messages::kOptFileOnePerRowOf + std::to_string(static_cast<int>(item));
}

// The checks in item order, so the first wrong item is the one named.
void checkShape(OptFile& file, MatrixShape objective, MatrixShape equations,
                MatrixShape inequalities, bool rowsKept) {
  const long senseEntries = file.sense.getDimension();
  if (senseEntries > 1) {
    reportFailure(messages::optFileCount(OptItem::sense, senseEntries, "entry",
                                         messages::kOptFileAtMostOne, ""));
  }
  if (senseEntries == 1 && !file.sense[1].isInf) reportFailure(messages::optFileSenseValue());

  // n comes from the first matrix with a row, else from the integer vector.
  long n = file.integers.getDimension();
  OptItem nFrom = OptItem::integers;
  for (const auto& [item, shape] :
       {std::pair{OptItem::objective, objective}, std::pair{OptItem::equations, equations},
        std::pair{OptItem::inequalities, inequalities}}) {
    if (shape.rows > 0) {
      n = shape.columns;
      nFrom = item;
      break;
    }
  }
  // With n = 0 every row is "[ ]" and the matrix reader keeps none; the sides tell how many
  // there were.
  if (n == 0) {
    objective.rows = senseEntries;
    file.objective.resize(objective.rows, 0, false);
    equations.rows = file.equationRhs.getDimension();
    inequalities.rows = file.lower.getDimension();
    if (rowsKept) {
      file.equations.resize(equations.rows, 0, false);
      file.inequalities.resize(inequalities.rows, 0, false);
    }
  }

  expectCount(OptItem::objective, objective.rows, "row", senseEntries,
              messages::kOptFileOnePerSenseEntry);
  expectWidth(OptItem::objective, objective, n, nFrom);
  expectWidth(OptItem::equations, equations, n, nFrom);
  expectCount(OptItem::equationRhs, file.equationRhs.getDimension(), "entry", equations.rows,
              onePerRowOf(OptItem::equations));
  expectCount(OptItem::reserved, file.reserved.getDimension(), "entry", 0, "");
  expectWidth(OptItem::inequalities, inequalities, n, nFrom);
  expectCount(OptItem::lower, file.lower.getDimension(), "entry", inequalities.rows,
              onePerRowOf(OptItem::inequalities));
  expectCount(OptItem::upper, file.upper.getDimension(), "entry", inequalities.rows,
              onePerRowOf(OptItem::inequalities));
  const std::string nReason = messages::kOptFileNFrom + std::to_string(static_cast<int>(nFrom));
  expectCount(OptItem::integers, file.integers.getDimension(), "entry", n, nReason);
  expectCount(OptItem::variableLower, file.variableLower.getDimension(), "entry", n, nReason);
  expectCount(OptItem::variableUpper, file.variableUpper.getDimension(), "entry", n, nReason);
}

}  // namespace

OptFile readOptFile(std::istream& is, RowObserver* observer) {
  OptFile file;
  readVector(is, OptItem::sense, file.sense);
  const MatrixShape objective = readMatrix(is, OptItem::objective, file.objective, nullptr);
  const MatrixShape equations = readMatrix(is, OptItem::equations, file.equations, observer);
  readVector(is, OptItem::equationRhs, file.equationRhs);
  readVector(is, OptItem::reserved, file.reserved);
  const MatrixShape inequalities =
      readMatrix(is, OptItem::inequalities, file.inequalities, observer);
  readVector(is, OptItem::lower, file.lower);
  readVector(is, OptItem::upper, file.upper);
  readVector(is, OptItem::integers, file.integers);
  readVector(is, OptItem::variableLower, file.variableLower);
  readVector(is, OptItem::variableUpper, file.variableUpper);

  char c = 0;
  skipDelimiters(is, detail::containerWhitespace(), true, c);
  if (peekChar(is, c)) {
    reportFailure(std::string(messages::kOptFilePrefix) + messages::kOptFileTrailingText);
  }
  checkShape(file, objective, equations, inequalities, observer == nullptr);
  return file;
}

}  // namespace lpconv
