#pragma once
// One element of a vector text, read exactly as the element's stream extraction reads it (value,
// stream state, position) but through the stream buffer: plain integers, the bulk of every file
// the converter writes, never touch the general number parser or a stream call per character.

#include <climits>
#include <cstdint>
#include <ios>
#include <istream>
#include <locale>
#include <streambuf>
#include <string>
#include <string_view>

#include <lpconv/containers/stream_cursor.h>
#include <lpconv/numbers/qq.h>

namespace lpconv::detail {

// Any other element type: its own extraction.
template <typename T>
void extractElement(StreamCursor& cursor, T& x) {
  cursor.stream() >> x;
}

// The element of almost every vector text, read straight from the stream buffer: digits without
// a leading zero (or a lone 0), at most 18 of them, followed by a character that ends the token
// and does not begin "inf". x and the stream end as the general extraction (and the negation of
// a "-" before the element) leave them; anything else returns false with nothing consumed. Only
// taken while the buffer holds the whole token and the character after it, so the digits can be
// handed back.
inline bool readShortInteger(StreamCursor& cursor, QQ& x, bool negative) {
  constexpr int kMostDigits = 18;
  std::streambuf& buffer = cursor.rawBuffer();
  if (!cursor.stream().good()) return false;
  int ch = buffer.sgetc();
  // After sgetc the count is that of the characters in the buffer, never a guess about the file.
  if (ch < '0' || ch > '9' || buffer.in_avail() < kMostDigits + 2) return false;
  const int first = ch;
  std::uint64_t value = 0;
  int digits = 0;
  do {
    value = value * 10 + static_cast<std::uint64_t>(ch - '0');
    ++digits;
    ch = buffer.snextc();
  } while (ch >= '0' && ch <= '9' && digits <= kMostDigits);
  if (digits > kMostDigits || (first == '0' && digits > 1) || (ch >= '+' && ch <= ':') ||
      ch == 'i') {
    for (; digits > 0; --digits) buffer.sungetc();
    return false;
  }
  detail::setSmallInteger(x, value, negative);
  return true;
}

// Skips blanks, tabs and line breaks straight on the buffer and returns the character after them
// without consuming it, when that is an ordinary one; returns kEnd, having consumed only white
// space, for the end of the input or a "/" (the general skip then takes over and leaves the
// stream as it would have). Needs a good stream.
inline int skipPlainWhitespace(StreamCursor& cursor) {
  std::streambuf& buffer = cursor.rawBuffer();
  int ch = buffer.sgetc();
  while (ch == ' ' || ch == '\n' || ch == '\t' || ch == '\r') ch = buffer.snextc();
  return ch == '/' ? StreamCursor::kEnd : ch;
}

// QQ's extraction: white space and comments, the token of characters "+" to ":", an "inf"
// completion, then the text parser. A token that is an optional sign and a decimal integer
// without leading zeros of at most 18 digits is set directly: the parser keeps such an integer
// as read (a "-0" stays positive). Short tokens are collected without a string.
inline void extractElement(StreamCursor& cursor, QQ& x) {
  char c = 0;
  cursor.skipWhitespaceAndComments(c);
  constexpr std::size_t kShort = 24;
  char shortToken[kShort];
  std::size_t length = 0;
  std::string longToken;
  int ch = cursor.peek();
  for (; ch >= '+' && ch <= ':'; ch = cursor.peek()) {
    if (length == kShort) {
      longToken.assign(shortToken, length);
      for (; ch >= '+' && ch <= ':'; ch = cursor.peek()) {
        longToken.push_back(static_cast<char>(ch));
        cursor.advance();
      }
      break;
    }
    shortToken[length++] = static_cast<char>(ch);
    cursor.advance();
  }
  bool completedInf = false;
  // Peeked once more, as the extraction does: at the end of the input this sets the fail bit.
  if (cursor.peek() == 'i') {
    // An "i" or "in" that is not completed is consumed all the same.
    cursor.advance();
    if (cursor.peek() == 'n') {
      cursor.advance();
      if (cursor.peek() == 'f') {
        completedInf = true;
        cursor.advance();
      }
    }
  }
  if (!longToken.empty() || completedInf) {
    if (longToken.empty()) longToken.assign(shortToken, length);
    if (completedInf) longToken.append("inf");
    x = QQ(longToken);
    return;
  }
  if (!detail::parsePlainInteger(std::string_view(shortToken, length), x)) {
    x = QQ(std::string(shortToken, length));
  }
}

// Whether `is >> long` is the plain decimal reading that the long reader below mirrors.
inline bool isPlainDecimalStream(std::istream& is) {
  return (is.flags() & std::ios::skipws) && (is.flags() & std::ios::basefield) == std::ios::dec &&
         is.getloc() == std::locale::classic();
}

// `is >> x` for a long on a stream for which isPlainDecimalStream holds: the sentry's white
// space skip, an optional sign, decimal digits; no digits give 0 and the fail bit, too many give
// the nearest limit and the fail bit; reaching the end sets the eof bit. A sentry that fails
// leaves x alone.
inline void extractDecimalLong(StreamCursor& cursor, long& x) {
  std::istream& is = cursor.stream();
  if (!is.good()) {
    is.setstate(std::ios::failbit);
    return;
  }
  std::streambuf& buffer = cursor.rawBuffer();
  constexpr int kEnd = StreamCursor::kEnd;
  int c = buffer.sgetc();
  while (c == ' ' || (c >= '\t' && c <= '\r')) c = buffer.snextc();
  if (c == kEnd) {
    is.setstate(std::ios::eofbit | std::ios::failbit);
    return;
  }
  const bool negative = c == '-';
  if (negative || c == '+') c = buffer.snextc();
  const std::uint64_t limit = negative ? std::uint64_t{1} << 63 : (std::uint64_t{1} << 63) - 1;
  std::uint64_t value = 0;
  bool any = false;
  bool overflow = false;
  for (; c >= '0' && c <= '9'; c = buffer.snextc()) {
    any = true;
    const auto d = static_cast<std::uint64_t>(c - '0');
    if (overflow || value > (limit - d) / 10) {
      overflow = true;
    } else {
      value = value * 10 + d;
    }
  }
  std::ios::iostate state = c == kEnd ? std::ios::eofbit : std::ios::goodbit;
  if (!any) {
    x = 0;
    state |= std::ios::failbit;
  } else if (overflow) {
    x = negative ? LONG_MIN : LONG_MAX;
    state |= std::ios::failbit;
  } else {
    x = static_cast<long>(negative ? 0 - value : value);
  }
  if (state != std::ios::goodbit) is.setstate(state);
}

// Negation in two's complement: the negation of LONG_MIN is LONG_MIN, without overflow.
template <typename T>
T negated(const T& x) {
  if constexpr (std::is_integral_v<T>) {
    return static_cast<T>(0 - static_cast<std::make_unsigned_t<T>>(x));
  } else {
    return -x;
  }
}

}  // namespace lpconv::detail
