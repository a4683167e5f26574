#pragma once
// The general bracketed, delimiter-separated text form of an array.
//
// Written: "[", a lead (line feed when the delimiters hold one, else a blank), the elements
// separated by the first delimiter, the lead again when there are elements, "]". Each element's
// text has every delimiter except the first escaped with a backslash (see escapeDelimiters).

#include <sstream>
#include <string>
#include <type_traits>

#include <lpconv/containers/array.h>
#include <lpconv/containers/messages.h>
#include <lpconv/containers/serializable.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

namespace lpconv {

namespace detail {

// Puts a backslash before every occurrence of delimiters[j] for j = 1 .. delimiters.size(),
// the last position being the terminating NUL. delimiters[0], the separator written between
// elements, is left alone. The reader undoes exactly the same set.
std::string escapeDelimiters(const std::string& text, const std::string& delimiters);
// Replaces every backslash + delimiters[j] by delimiters[j], for the same positions.
std::string unescapeDelimiters(const std::string& text, const std::string& delimiters);

}  // namespace detail

template <typename T>
class SerializableArray : public ConversionArray<T>, public Serializable {
 public:
  explicit SerializableArray(const std::string& delimiters = " ", bool allowComments = false,
                             bool secondFlag = false)
      : Serializable(delimiters, allowComments, secondFlag) {}
  SerializableArray(const SerializableArray&) = default;
  SerializableArray& operator=(const SerializableArray&) = default;
  ~SerializableArray() override = default;

  // Array::takeAsCopy, and the settings as a copy assignment gives them (other gets the old
  // ones of *this: it is left without storage and about to go).
  void takeAsCopy(SerializableArray& other) noexcept {
    Array<T>::takeAsCopy(other);
    delimiters.swap(other.delimiters);
    allowComments = other.allowComments;
    secondFlag = other.secondFlag;
  }

  // Returns os. "[ 1,2,3 ]" for the delimiters ", "; an empty array is "[ ]" (or "[\n]").
  std::ostream& serialize(std::ostream& os) const override {
    const char* lead = delimiters.find('\n') != std::string::npos ? "\n" : " ";
    os << "[" << lead;
    for (long i = 1; i <= this->dimension; ++i) {
      std::ostringstream text;
      text << this->elements[i];
      os << detail::escapeDelimiters(text.str(), delimiters);
      if (i < this->dimension) os << delimiters[0];
    }
    if (this->dimension != 0) os << lead;
    return os << "]";
  }

  // Skips white space, then expects "[" (else reports "SerializableArray: no start found") and
  // reads tokens up to "]". Without allowComments each delimiter ends a token, so two in a row
  // give an element from an empty token ("[ 1  2 ]" is 1, 0, 2 for long); a single leading
  // delimiter is skipped. With allowComments delimiters and comments are skipped but end
  // nothing: "[1 2]" is the one element 12. A backslash makes the next character literal.
  // Element text is read with the element's stream extraction; a failed extraction is not
  // checked. At the end of the input the pending token still becomes an element, the read stops
  // and the stream's fail bit is set. The storage grows as if by one element at a time without
  // spare slots (to max(capacity, element count)), but in linear time.
  void deserialize(std::istream& is) override {
    char c = 0;
    skipDelimiters(is, " \t\r\n", true, c);
    if (!peekChar(is, c) || c != '[') reportFailure(messages::kSerializableArrayNoStart);
    this->clear();
    char previous = '[';
    is.get();
    bool firstToken = true;
    Stop stop = Stop::kDelimiter;
    typename Array<T>::Appender appender(*this);
    while (stop == Stop::kDelimiter) {
      std::string token;
      stop = readToken(is, token, previous, firstToken);
      if (stop != Stop::kDelimiter && token.empty()) break;
      T& element = appender.next();
      if constexpr (std::is_integral_v<T>) element = 0;
      std::istringstream text(detail::unescapeDelimiters(token, delimiters));
      text >> element;
      firstToken = false;
    }
    appender.finish(appender.count());
    if (stop == Stop::kBracket) {
      is.get();
    } else {
      is.setstate(std::ios::failbit);
    }
  }

 private:
  enum class Stop { kDelimiter, kBracket, kEnd };

  // Appends the characters of one token; returns what ended it. previous carries the last
  // appended character from token to token (a backslash escapes across the call).
  Stop readToken(std::istream& is, std::string& token, char& previous, bool& firstToken) {
    char c = 0;
    for (;;) {
      if (previous != '\\') {
        const bool hit = allowComments ? skipDelimitersAndComments(is, delimiters, &c)
                                       : skipDelimiters(is, delimiters, false, c);
        if (!peekChar(is, c)) return Stop::kEnd;
        if (c == ']') return Stop::kBracket;
        if (hit) {
          if (!firstToken || !token.empty()) return Stop::kDelimiter;
          firstToken = false;
          continue;
        }
      } else if (!peekChar(is, c)) {
        return Stop::kEnd;
      }
      token += c;
      previous = c;
      is.get();
    }
  }
};

}  // namespace lpconv
