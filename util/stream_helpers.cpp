#include "util/stream_helpers.h"

namespace lpconv {

namespace {

// The end of input peeks as -1, which the readers see as byte 255.
bool isEnd(char c) { return static_cast<unsigned char>(c) == 255; }

char peeked(std::istream& is) { return static_cast<char>(is.peek()); }

}  // namespace

bool peekChar(std::istream& is, char& c) {
  c = peeked(is);
  return !isEnd(c);
}

bool skipComment(std::istream& is, char& c) {
  c = peeked(is);
  if (c != '/') return false;
  is.get();
  c = peeked(is);
  if (c == '/') {
    while (!isEnd(c = peeked(is)) && c != '\n') is.get();
    return true;
  }
  if (c == '*') {
    is.get();
    char previous = '\0';
    while (!isEnd(c = peeked(is))) {
      is.get();
      if (previous == '*' && c == '/') break;
      previous = c;
    }
    c = peeked(is);
    return true;
  }
  is.putback(c);
  return false;
}

bool skipDelimiters(std::istream& is, const std::string& set, bool all, char& c) {
  if (all) {
    while (set.find(c = peeked(is)) != std::string::npos && !isEnd(c)) is.get();
    return false;
  }
  c = peeked(is);
  if (set.find(c) != std::string::npos && !isEnd(c)) {
    is.get();
    return true;
  }
  return false;
}

bool skipDelimitersAndComments(std::istream& is, const std::string& set, char* c) {
  char local = '\0';
  char& out = c != nullptr ? *c : local;
  skipDelimiters(is, set, true, out);
  while (skipComment(is, out)) skipDelimiters(is, set, true, out);
  return false;
}

bool skipWhitespaceToBar(std::istream& is) {
  const std::string set = " \t\r\n";
  char c = '\0';
  bool comment = false;
  skipDelimiters(is, set, true, c);
  while ((comment = skipComment(is, c))) skipDelimiters(is, set, true, c);
  if (c == '|') {
    is.get();
    return true;
  }
  return comment;
}

}  // namespace lpconv
