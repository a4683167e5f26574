#pragma once
// Character access for the container readers straight on the stream buffer. Each operation has
// exactly the effect of the istream call it stands for (state bits, position), but costs an inline
// buffer access instead of a sentry and a virtual call per character. The tied stream is flushed
// by the reader's first real istream call, as before; the count of the last unformatted read
// (gcount) is not kept up to date.

#include <ios>
#include <istream>
#include <streambuf>
#include <string>

#include <lpconv/util/stream_helpers.h>

namespace lpconv::detail {

class StreamCursor {
 public:
  using Traits = std::istream::traits_type;
  static constexpr int kEnd = Traits::eof();

  explicit StreamCursor(std::istream& is) : is(is), buffer(is.rdbuf()) {}

  std::istream& stream() { return is; }

  // is.peek(): a stream that is not good gets the fail bit; the end of the input sets the eof bit.
  int peek() {
    if (!is.good()) {
      is.setstate(std::ios::failbit);
      return kEnd;
    }
    const int c = buffer->sgetc();
    if (c == kEnd) is.setstate(std::ios::eofbit);
    return c;
  }

  // is.get(): as peek, and the end of the input sets the fail bit too.
  int get() {
    if (!is.good()) {
      is.setstate(std::ios::failbit);
      return kEnd;
    }
    const int c = buffer->sbumpc();
    if (c == kEnd) is.setstate(std::ios::eofbit | std::ios::failbit);
    return c;
  }

  // Consumes the character the last peek returned (never the end), as is.get() would then.
  void advance() { buffer->sbumpc(); }

  // The raw buffer, for element readers that mirror a formatted extraction.
  std::streambuf& rawBuffer() { return *buffer; }

  // peekChar: the peeked byte as a char; false for the end (and for a literal byte 255).
  bool peekChar(char& c) {
    c = static_cast<char>(peek());
    return static_cast<unsigned char>(c) != 255;
  }

  // skipDelimitersAndComments over " \t\r\n", the same sequence of peeks included; comments go
  // through the shared helper, which is rare enough to afford the stream calls.
  void skipWhitespaceAndComments(char& c) {
    skipWhitespace(c);
    for (;;) {
      if (c != '/') {
        // The comment helper's own first peek, which also marks a stream that ran out.
        peekChar(c);
        return;
      }
      if (!skipComment(is, c)) return;
      skipWhitespace(c);
    }
  }

 private:
  void skipWhitespace(char& c) {
    while (peekChar(c) && (c == ' ' || c == '\t' || c == '\r' || c == '\n')) buffer->sbumpc();
  }

  std::istream& is;
  std::streambuf* buffer;
};

}  // namespace lpconv::detail
