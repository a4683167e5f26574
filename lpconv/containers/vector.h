#pragma once
// One-based numeric vectors with the one-line text form "[ a b c ]".

#include <istream>
#include <ostream>

#include <type_traits>

#include <lpconv/containers/element_reader.h>
#include <lpconv/containers/messages.h>
#include <lpconv/containers/serializable_array.h>
#include <lpconv/containers/stream_cursor.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/numbers/tolerance.h>
#include <lpconv/util/exceptions.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

namespace lpconv {

namespace detail {

inline const std::string& containerWhitespace() {
  static const std::string set = " \t\r\n";
  return set;
}

enum class Opening { none, empty, elements };

// The start of a bracketed vector or matrix text: skips white space and comments; when "[" follows,
// consumes it and the white space and comments after it, and also a "]" that closes it at once.
inline Opening openBrackets(std::istream& is) {
  const std::string& whitespace = containerWhitespace();
  char c = 0;
  skipDelimitersAndComments(is, whitespace, &c);
  if (!peekChar(is, c) || c != '[') return Opening::none;
  is.get();
  skipDelimitersAndComments(is, whitespace, &c);
  if (peekChar(is, c) && c == ']') {
    is.get();
    return Opening::empty;
  }
  return Opening::elements;
}

// The value "inf" reads as: the element type's infinity when it has one; otherwise a static
// that is never set, so 0 for integers.
template <typename T>
const T& infinityValue() {
  if constexpr (requires { T::infinity(); }) {
    return T::infinity();
  } else {
    static const T neverSet{};
    return neverSet;
  }
}

// Element equality of the vector comparison: exact for built-in numbers.
template <typename T>
bool nearlyEqual(const T& a, const T& b) {
  return a == b;
}

// True when a and b compare equal or |a - b| <= 1/10^9, the library's one tolerance.
inline bool nearlyEqual(const QQ& a, const QQ& b) { return withinEqualityTolerance(a, b); }

}  // namespace detail

template <typename T>
class Vector : public SerializableArray<T> {
 public:
  // Empty; delimiters " ", comments allowed.
  Vector() : SerializableArray<T>(" ", true, true) {}
  Vector(const Vector&) = default;
  Vector& operator=(const Vector&) = default;
  ~Vector() override = default;

  // Writes "[ ", every element followed by a blank, then "]"; no line feed. Returns os.
  std::ostream& serialize(std::ostream& os) const override {
    os << "[ ";
    for (long i = 1; i <= this->dimension; ++i) os << this->elements[i] << " ";
    return os << "]";
  }

  // Empties the vector, then reads "[ e1 e2 ... ]". White space and comments may stand before
  // "[" and between elements; when the next character is not "[" the vector stays empty and
  // only white space and comments are consumed. "inf" and "-inf" are accepted; a "-" before an
  // element negates what the element's own extraction reads ("--5" is 5; the negation of the
  // lowest long is itself). The storage grows as if by one element at a time with 100 spare
  // slots (k elements read into capacity c leave c when k <= c, else c + 101 * ceil((k - c) /
  // 101)), but in linear time.
  // Throws ReadException("Vector: bad stream") when is has already failed. Reports "Vector: bad
  // input" for an element that does not read (including the end of the input), "Vector: bad
  // input2" for "i" not followed by "n" and "Vector: bad input3" for "in" not followed by "f".
  void deserialize(std::istream& is) override {
    this->resize(0, true);
    if (is.fail()) throw ReadException(messages::kVectorBadStream);
    if (detail::openBrackets(is) != detail::Opening::elements) return;
    detail::StreamCursor cursor(is);
    bool plainDecimal = false;
    if constexpr (std::is_same_v<T, long>) plainDecimal = detail::isPlainDecimalStream(is);
    typename Array<T>::Appender appender(*this);
    char c = 0;
    for (;;) {
      T& element = appender.next();
      if constexpr (std::is_integral_v<T>) element = 0;
      cursor.peekChar(c);
      const bool negative = c == '-';
      if (negative) {
        cursor.advance();
        cursor.peekChar(c);
      }
      bool signApplied = false;
      if constexpr (std::is_same_v<T, QQ>) {
        signApplied = c != 'i' && detail::readShortInteger(cursor, element, negative);
      }
      if (signApplied) {
        // Read with its sign; the stream is good and the buffer holds the next character.
        const int next = detail::skipPlainWhitespace(cursor);
        if (next == ']') {
          cursor.advance();
          break;
        }
        if (next != detail::StreamCursor::kEnd) continue;
      } else if (c != 'i') {
        if constexpr (std::is_same_v<T, long>) {
          if (plainDecimal) {
            detail::extractDecimalLong(cursor, element);
          } else {
            is >> element;
          }
        } else {
          detail::extractElement(cursor, element);
        }
        if (is.fail()) reportFailure(messages::kVectorBadInput);
      } else {
        cursor.advance();
        if (!cursor.peekChar(c) || c != 'n') reportFailure(messages::kVectorBadInput2);
        cursor.advance();
        if (!cursor.peekChar(c) || c != 'f') reportFailure(messages::kVectorBadInput3);
        cursor.advance();
        element = detail::infinityValue<T>();
      }
      if (negative && !signApplied) element = detail::negated(element);
      cursor.skipWhitespaceAndComments(c);
      if (cursor.peekChar(c) && c == ']') {
        cursor.advance();
        break;
      }
    }
    const long spilled = appender.count() - appender.inPlaceCapacity();
    appender.finish(appender.inPlaceCapacity() +
                    (spilled + this->kReserve) / (this->kReserve + 1) * (this->kReserve + 1));
  }

  // Element-wise subtraction in place. Reports "Vector: dimension mismatch2" when the
  // dimensions differ; the element type's own rules apply (e.g. "INF - INF is not defined").
  // other may be *this.
  Vector& operator-=(const Vector& other) {
    if (this->dimension != other.dimension) reportFailure(messages::kVectorDimensionMismatch2);
    for (long i = 1; i <= this->dimension; ++i) this->elements[i] -= other.elements[i];
    return *this;
  }
};

// True when every element pair is equal; for QQ within the tolerance 1/10^9 (a difference of
// exactly 1/10^9 still counts as equal). A vector equals itself without any check; otherwise
// vectors of different dimensions are an error, not unequal: "Vector: dimension mismatch9".
template <typename T>
bool operator==(const Vector<T>& a, const Vector<T>& b) {
  if (&a == &b) return true;
  if (a.getDimension() != b.getDimension()) reportFailure(messages::kVectorDimensionMismatch9);
  for (long i = 1; i <= a.getDimension(); ++i) {
    if (!detail::nearlyEqual(a[i], b[i])) return false;
  }
  return true;
}

}  // namespace lpconv
