#pragma once
// One-based matrices: an array of Vector rows with a common column count, written one row per
// line between "[" and "]" lines.

#include <istream>
#include <ostream>
#include <string>

#include <lpconv/containers/array.h>
#include <lpconv/containers/messages.h>
#include <lpconv/containers/serializable.h>
#include <lpconv/containers/vector.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

namespace lpconv {

template <typename T>
class Matrix : public ConversionArray<Vector<T>>, public Serializable {
 public:
  // 0 rows, 0 columns. A blank is added to delimiters when missing.
  Matrix(const std::string& delimiters, bool allowComments, bool secondFlag)
      : Serializable(delimiters, allowComments, secondFlag) {}
  Matrix() : Matrix(" ", true, true) {}
  Matrix(const Matrix&) = default;
  Matrix& operator=(const Matrix&) = default;
  ~Matrix() override = default;

  // Frees the rows and the row storage; rows, capacity and columns become 0.
  void release() override {
    ConversionArray<Vector<T>>::release();
    columns = 0;
  }

  // resize(rows, columns, reserveExtra) with the current column count.
  void resize(long rows, bool reserveExtra) override { resize(rows, columns, reserveExtra); }

  // True when there is at least one row and one column.
  bool isNonEmpty() const override { return columns > 0 && this->dimension > 0; }

  // Reads "[", rows in Vector's form, "]", with white space and comments around them. When the
  // first non-blank character is not "[" the matrix stays empty. The first non-empty row sets
  // the column count; a longer row later reports "Matrix row dimension mismatch". A shorter
  // row is brought to the column count when another row follows and kept short when it is the
  // last. A matrix whose rows are all empty has no rows. Every row count, capacity and setting
  // ends as the literal resize before each row leaves it, in time linear in the text. Reports "Matrix: bad stream" when is
  // has already failed, "Matrix: bad input" when a row does not start with "[" (also at the
  // end of the input) or the stream fails while reading it; the row's own messages apply.
  void deserialize(std::istream& is) override {
    if (this->elements != nullptr) {
      for (long r = 0; r <= this->dimension; ++r) this->elements[r].resize(0, true);
    }
    ConversionArray<Vector<T>>::resize(0, true);
    columns = 0;
    if (is.fail()) reportFailure(messages::kMatrixBadStream);
    const detail::Opening opening = detail::openBrackets(is);
    if (opening == detail::Opening::none) return;
    const std::string& whitespace = detail::containerWhitespace();
    char c = 0;
    if (opening == detail::Opening::elements) {
      for (long r = 1;; ++r) {
        addRow(r);
        // A row reader facing anything but "[" reads an empty row and consumes nothing, so
        // without this check the loop would never end.
        skipDelimitersAndComments(is, whitespace, &c);
        if (!peekChar(is, c) || c != '[') reportFailure(messages::kMatrixBadInput);
        Vector<T>& row = this->elements[r];
        row.deserialize(is);
        if (is.fail()) reportFailure(messages::kMatrixBadInput);
        const long d = row.getDimension();
        if (d > columns) {
          if (columns != 0) reportFailure(messages::kMatrixRowDimensionMismatch);
          columns = d;
          resize(r, d, true);
        }
        skipDelimitersAndComments(is, whitespace, &c);
        if (peekChar(is, c) && c == ']') {
          is.get();
          break;
        }
      }
    }
    if (columns == 0) resize(0, 0, true);
  }

  // Writes "[", a line end, each row's "[ ... ]" followed by a line end, then "]" without one.
  // Line ends are std::endl (each flushes). Returns os.
  std::ostream& serialize(std::ostream& os) const override {
    os << "[" << std::endl;
    for (long r = 1; r <= this->dimension; ++r) this->elements[r].serialize(os) << std::endl;
    return os << "]";
  }

  // Makes the matrix rows x cols. Reports "Matrix: invalid size" for a negative count. New rows
  // are cols long; every row slot 0..rows is brought to cols entries when rows >= 1 (new
  // QQ slots from fresh storage hold 0, reused slots keep their old values).
  void resize(long rows, long cols, bool reserveExtra) {
    if (rows < 0 || cols < 0) reportFailure(messages::kMatrixInvalidSize);
    if (rows > this->dimension) {
      const long old = this->dimension;
      ConversionArray<Vector<T>>::resize(rows, reserveExtra);
      for (long r = old + 1; r <= rows; ++r) this->elements[r].resize(cols, reserveExtra);
    }
    this->dimension = rows;
    if (rows >= 1) {
      for (long r = 0; r <= rows; ++r) this->elements[r].resize(cols, reserveExtra);
    }
    columns = cols;
  }

  // Makes the matrix a rows x cols matrix of zeros. A rows of 0 means the current row count, a
  // cols of 0 means rows (square). Each row gets the settings of a default Vector. Reports
  // "array: dimension < 0" for a negative column count and "Matrix: invalid size" for a negative
  // row count with a positive column count.
  void setZero(long rows = 0, long cols = 0) {
    if (rows == 0) rows = this->dimension;
    if (cols == 0) cols = rows;
    Vector<T> zeroRow;
    zeroRow.resize(cols, false);
    for (long j = 1; j <= cols; ++j) zeroRow[j] = T{};
    resize(rows, false);
    // Slot 0 is zeroed too, so every slot 0..rows keeps the column count.
    for (long r = 0; this->elements != nullptr && r <= this->dimension; ++r) {
      Vector<T>& row = this->elements[r];
      row.resize(cols, false);
      for (long j = 1; j <= cols; ++j) row[j] = zeroRow[j];
      static_cast<Serializable&>(row) = zeroRow;
    }
    columns = cols;
  }

  long getRows() const { return this->dimension; }
  long getColumns() const { return columns; }

 private:
  // resize(r, columns, true) for the reader's next row r, given that rows 0..r - 2 already have
  // the column count: only the row just read (which may be shorter) and the new row can change,
  // so the other rows are not visited again.
  void addRow(long r) {
    if (r > this->dimension) {
      const long old = this->dimension;
      ConversionArray<Vector<T>>::resize(r, true);
      for (long k = old + 1; k <= r; ++k) this->elements[k].resize(columns, true);
    }
    this->dimension = r;
    this->elements[r - 1].resize(columns, true);
    this->elements[r].resize(columns, true);
  }

  long columns = 0;
};

}  // namespace lpconv
