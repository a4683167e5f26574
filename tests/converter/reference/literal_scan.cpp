#include "literal_scan.h"

#include <cctype>
#include <cstdlib>

#include <lpconv/util/failure.h>
#include <lpconv/util/patterns.h>
#include <lpconv/util/strings.h>

namespace lpconv::reference {

namespace {

bool isDecimalDigit(char c) { return c >= '0' && c <= '9'; }

// The implicit-coefficient rule: a number that reads as 0 is a written 0 only when a "0" comes
// before the next x; otherwise the term had no number and the sign decides.
QQ implicitCoefficient(const QQ& value, const std::string& text, std::size_t from, bool negative) {
  if (!value.isZero()) return value;
  const std::size_t zero = text.find('0', from);
  const std::size_t x = text.find('x', from);
  if (zero != std::string::npos && (x == std::string::npos || zero < x)) return QQ();
  return negative ? QQ(-1) : QQ(1);
}

std::string normalize(const std::string& text) {
  std::string result = replacePattern(text, "( |\t|\r|\n)", "");
  result = replacePattern(result, "\\+-", "-");
  result = replacePattern(result, "-\\+", "-");
  result = replacePattern(result, "--", "+");
  result = replacePattern(result, "\\+\\+", "+");
  return result;
}

}  // namespace

dbl_t readDecimal(const char* text) {
  const char* p = text;
  while (std::isspace(static_cast<unsigned char>(*p))) ++p;
  bool negative = false;
  if (*p == '+' || *p == '-') negative = *p++ == '-';
  if (p[0] == '0' && (p[1] == 'x' || p[1] == 'X')) return negative ? -0.0L : 0.0L;
  return static_cast<dbl_t>(std::strtod(text, nullptr));
}

QQ readDecimalQQ(const char* text) { return fromDbl(readDecimal(text)); }

long readIndex(const char* text) { return std::strtol(text, nullptr, 10); }

bool leadsToDigit(const std::string& text, std::size_t from) {
  std::size_t p = from;
  while (p < text.size() && (text[p] == ' ' || text[p] == '+' || text[p] == '-')) ++p;
  if (p >= text.size()) reportFailure("scan for digit failed!");
  return isDecimalDigit(text[p]);
}

QQ& entry(Vector<QQ>& vector, long k, long n) {
  if (k < 1 || k > n) reportFailure("Array: index out of range");
  return vector.at(k);
}

std::string parseSide(const std::string& text, long n, QQ& constant, Vector<QQ>& row) {
  constant = QQ();
  if (n != 0) row.resize(n, false);
  for (long i = 1; i <= n; ++i) row.at(i) = QQ();

  const std::string s = normalize(text);
  std::size_t p = 0;
  while (p < s.size() && (s[p] == '<' || s[p] == '=' || s[p] == '>')) ++p;

  QQ current;
  bool pending = false;
  std::size_t restStart = std::string::npos;
  while (p < s.size()) {
    const char c = s[p];
    if (c == 'x') {
      entry(row, readIndex(s.c_str() + p + 1), n) = current;
      pending = false;
    } else if (c == '<' || c == '=' || c == '>') {
      restStart = p;
      break;
    } else if (c == '+' || c == '-') {
      if (pending) constant = constant + current;
      dbl_t value = readDecimal(s.c_str() + p + 1);
      if (c == '-') value = -value;
      current = implicitCoefficient(fromDbl(value), s, p + 1, c == '-');
      pending = true;
    } else {
      current = implicitCoefficient(readDecimalQQ(s.c_str() + p), s, p, false);
      pending = true;
    }
    ++p;
    while (p < s.size() && isDecimalDigit(s[p])) ++p;
  }
  if (pending) constant = constant + current;
  if (restStart == std::string::npos) return "";
  return trim(s.substr(restStart), " \t\n\r\f\v");
}

}  // namespace lpconv::reference
