#pragma once
// One-based matrices: an array of Vector rows with a common column count, written one row per
// line between "[" and "]" lines.

#include <algorithm>
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
  // ends as the literal resize before each row leaves it, in time linear in the text. Reports
  // "Matrix: bad stream" when is has already failed, "Matrix: bad input" when a row does not start
  // with "[" (also at the end of the input) or the stream fails while reading it; the row's own
  // messages apply.
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
      RowGrowth growth(*this);
      for (long r = 1;; ++r) {
        growth.addRow(r);
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
          growth.allRowsChanged();
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
  // The reader's resize(r, columns, true) before each row r, in linear time overall. The literal
  // growth of the row array (100 spare slots) copies every row whenever a row exceeds the
  // capacity, which leaves each row's capacity at its dimension; here the row storage grows
  // geometrically by moving rows, the capacity field follows the literal growth, and only the
  // rows that changed since the literal copy before get their capacity set as a copy would. Of
  // the rows, only the one just read (which may be short) and the new one can need a resize.
  // The storage may have room for more slots than capacity + 1 (harmless: every decision looks
  // at the capacity, and slots beyond the capacity are never made).
  class RowGrowth {
   public:
    explicit RowGrowth(Matrix& m) : m(m) {}

    void addRow(long r) {
      if (r > m.capacity) {
        const long needed = r + Matrix::kReserve + 1;
        const long room = m.elements == nullptr ? 0 : detail::headerOf(m.elements).room;
        if (needed > room) {
          m.elements = detail::moveSlots(m.elements, m.elements == nullptr ? 0 : m.dimension + 1,
                                         std::max(2 * room, needed), false);
        }
        m.makeSlots(r + 1);
        for (long k = changedFrom; k < r; ++k) m.elements[k].dropSpareCapacity();
        changedFrom = r - 1;
        m.capacity = r + Matrix::kReserve;
      } else {
        m.makeSlots(r + 1);
      }
      // New rows are read at once and mostly keep the column count: their spare slots are only
      // made if something reaches them later.
      for (long k = m.dimension + 1; k <= r; ++k) {
        m.elements[k].resizeFreshKeepingSpareAway(m.columns);
      }
      m.dimension = r;
      m.elements[r - 1].resize(m.columns, true);
      m.elements[r].resize(m.columns, true);
    }

    // After a resize that touched every row.
    void allRowsChanged() { changedFrom = 0; }

   private:
    Matrix& m;
    long changedFrom = 0;
  };

  long columns = 0;
};

}  // namespace lpconv
