#pragma once
// The character-level rules every pass shares: character classes, the index after an "x", the
// 1..n index check and the digit scan of the bound lines.

#include <cstddef>
#include <string_view>

namespace lpconv {

inline bool isDigit(char c) { return c >= '0' && c <= '9'; }
// The C locale's white space, as string-to-double and string-to-integer skip it.
inline bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline char foldCase(char c) {
  return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c;
}

// base-10 string-to-integer (C strtol with base 10) on `text`: leading white space, a sign,
// digits; saturates at the long range; 0 when no digits follow. `text` is NUL-terminated.
long readIndex(const char* text);

// Every index the converter addresses must lie in 1..n; any other reports
// "Array: index out of range".
void checkIndex(long index, long n);

// Whether the text from `from` leads to a decimal digit, skipping blanks (code 32 only), "+" and
// "-". Reports "scan for digit failed!" when the text ends first.
bool leadsToDigit(std::string_view text, std::size_t from);

}  // namespace lpconv
