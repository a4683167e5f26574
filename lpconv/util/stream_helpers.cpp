#include <lpconv/util/stream_helpers.h>

namespace lpconv {

namespace {

constexpr unsigned char kEndByte = 255;

bool inSet(const std::string& set, char c) { return set.find(c) != std::string::npos; }

}  // namespace

bool peekChar(std::istream& is, char& c) {
  c = static_cast<char>(is.peek());
  return static_cast<unsigned char>(c) != kEndByte;
}

bool skipComment(std::istream& is, char& c) {
  if (!peekChar(is, c) || c != '/') return false;
  is.get();
  const bool more = peekChar(is, c);
  if (more && c == '/') {
    while (peekChar(is, c) && c != '\n') is.get();
    return true;
  }
  if (more && c == '*') {
    is.get();
    bool afterStar = false;
    while (peekChar(is, c)) {
      is.get();
      if (afterStar && c == '/') {
        peekChar(is, c);
        return true;
      }
      afterStar = c == '*';
    }
    return true;
  }
  // A lone slash: the character after it is put back, although it was never taken.
  is.putback(c);
  return false;
}

bool skipDelimiters(std::istream& is, const std::string& set, bool all, char& c) {
  if (all) {
    while (peekChar(is, c) && inSet(set, c)) is.get();
    return false;
  }
  if (peekChar(is, c) && inSet(set, c)) {
    is.get();
    return true;
  }
  return false;
}

bool skipDelimitersAndComments(std::istream& is, const std::string& set, char* c) {
  char local = 0;
  char& ch = c != nullptr ? *c : local;
  skipDelimiters(is, set, true, ch);
  while (skipComment(is, ch)) skipDelimiters(is, set, true, ch);
  return false;
}

bool skipWhitespaceToBar(std::istream& is) {
  char c = 0;
  skipDelimitersAndComments(is, " \t\r\n", &c);
  if (peekChar(is, c) && c == '|') {
    is.get();
    return true;
  }
  return false;
}

}  // namespace lpconv
