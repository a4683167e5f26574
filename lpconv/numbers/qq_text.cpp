// The text form of QQ: the writer, the string parser and the stream reader.

#include <cctype>
#include <istream>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>

#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

namespace lpconv {

namespace {

// Reads an integer field with GMP's base-0 rules; throws std::invalid_argument("mpz_set_str").
ZZ readInteger(std::string_view text) {
  char buffer[64];
  if (text.size() < sizeof buffer) {
    text.copy(buffer, text.size());
    buffer[text.size()] = '\0';
    return ZZ(static_cast<const char*>(buffer));
  }
  return ZZ(std::string(text));
}

void flipNegative(QQ& r, ZZ& field) {
  if (field.sign() < 0) {
    r.isPositive = !r.isPositive;
    abs(field);
  }
}

QQ parseText(std::string_view text);

// M "e" E: the mantissa times 10 to the exponent. Returns the product itself rather than
// re-reading its written form: the written form of a canonical value reads back unchanged.
QQ parseWithExponent(std::string_view text, std::size_t letter) {
  const QQ mantissa = parseText(text.substr(0, letter));
  std::string_view rest = text.substr(letter + 1);
  bool negative = false;
  if (!rest.empty() && (rest.front() == '+' || rest.front() == '-')) {
    negative = rest.front() == '-';
    rest.remove_prefix(1);
  }
  const std::size_t firstNonZero = rest.find_first_not_of('0');
  rest.remove_prefix(firstNonZero == std::string_view::npos ? rest.size() : firstNonZero);
  QQ exponent;
  if (!rest.empty()) {
    exponent = parseText(rest);
    if (negative) exponent = -std::move(exponent);
  }
  static const QQ kTen(10L);
  return mantissa * power(kTen, exponent);
}

// I "." F or I "," F. Only the integer part of the text after the zeros counts.
QQ parseDecimal(std::string_view text, std::size_t separator, bool positive) {
  QQ r;
  r.isPositive = positive;
  r.ganze = readInteger(text.substr(0, separator));
  std::string_view rest = text.substr(separator + 1);
  const std::size_t firstNonZero = rest.find_first_not_of('0');
  const std::size_t zeros = firstNonZero == std::string_view::npos ? rest.size() : firstNonZero;
  QQ t = parseText(rest.substr(zeros));
  ZZ digits = std::move(t.ganze);
  stripTrailingZeros(digits);
  const long places = static_cast<long>(zeros) + digitCount(digits);
  r.zaehler = std::move(digits);
  mpz_ui_pow_ui(r.nenner.value, 10, static_cast<unsigned long>(places));
  r.isInf = false;
  normalize(r);
  return r;
}

// I ":" N "/" D, the writer's mixed form.
QQ parseMixed(std::string_view text, std::size_t separator, bool positive) {
  QQ r;
  r.isPositive = positive;
  r.ganze = readInteger(text.substr(0, separator));
  const std::string_view rest = text.substr(separator + 1);
  if (!rest.empty() && rest.front() == '0') reportFailure(messages::kMalformedNumber1);
  QQ t = parseText(rest);
  if (!t.isPositive) reportFailure(messages::kMalformedNumber1);
  if (!t.ganze.isZero()) reportFailure(messages::kMalformedNumber2);
  r.zaehler = std::move(t.zaehler);
  r.nenner = std::move(t.nenner);
  r.isInf = false;
  normalize(r);
  return r;
}

QQ parseFraction(std::string_view text, std::size_t separator, bool positive) {
  QQ r;
  r.isPositive = positive;
  r.nenner = readInteger(text.substr(separator + 1));
  if (r.nenner.isZero()) reportFailure(messages::kDivisionByZero1);
  r.isInf = false;
  r.zaehler = readInteger(text.substr(0, separator));
  flipNegative(r, r.zaehler);
  flipNegative(r, r.nenner);
  normalize(r);
  return r;
}

// No separator: an integer (kept as read, without normalisation) or "inf".
QQ parseWhole(std::string_view text, bool positive) {
  if (text.front() != 'i') {
    QQ r;
    r.ganze = readInteger(text);
    r.isPositive = positive || r.ganze.isZero();
    return r;
  }
  if (text.size() < 2 || text[1] != 'n') reportFailure(messages::kParseError2);
  if (text.size() < 3 || text[2] != 'f') reportFailure(messages::kParseError3);
  return QQ(positive);
}

QQ parseText(std::string_view text) {
  std::size_t start = 0;
  while (start < text.size() && std::isspace(static_cast<unsigned char>(text[start]))) ++start;
  text.remove_prefix(start);
  const std::size_t letter = text.find_first_of("eE");
  if (letter != std::string_view::npos) return parseWithExponent(text, letter);
  bool positive = true;
  if (!text.empty() && text.front() == '-') {
    positive = false;
    text.remove_prefix(1);
  } else if (!text.empty() && text.front() == '+') {
    text.remove_prefix(1);
  }
  if (text.empty()) reportFailure(messages::kParseError1);
  const std::size_t separator = text.find_first_of("/,.:");
  if (separator == std::string_view::npos) return parseWhole(text, positive);
  switch (text[separator]) {
    case '/':
      return parseFraction(text, separator, positive);
    case ':':
      return parseMixed(text, separator, positive);
    default:
      return parseDecimal(text, separator, positive);
  }
}

}  // namespace

// The parser reads up to the first NUL, as it would from a C string.
QQ::QQ(const std::string& text) : QQ(parseText(std::string_view(text.c_str()))) {}

QQ::QQ(const char* text) : QQ(parseText(std::string_view(text))) {}

void appendText(std::string& out, const QQ& x) {
  if (x.isInf) {
    out.append(x.isPositive ? "inf" : "-inf");
    return;
  }
  const bool hasGanze = !x.ganze.isZero();
  const bool hasFraction = !x.zaehler.isZero();
  if (!hasGanze && !hasFraction) {
    out.push_back('0');
    return;
  }
  if (!x.isPositive) out.push_back('-');
  if (hasGanze) {
    appendText(out, x.ganze);
    if (hasFraction) out.push_back(':');
  }
  if (hasFraction) {
    appendText(out, x.zaehler);
    if (mpz_cmp_ui(x.nenner.value, 1) != 0) {
      out.push_back('/');
      appendText(out, x.nenner);
    }
  }
}

std::string toString(const QQ& x) {
  std::string text;
  appendText(text, x);
  return text;
}

std::ostream& operator<<(std::ostream& os, const QQ& x) {
  const std::string text = toString(x);
  return os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::istream& operator>>(std::istream& is, QQ& x) {
  skipDelimitersAndComments(is, " \t\r\n");
  std::string token;
  for (int c = is.peek(); c >= '+' && c <= ':'; c = is.peek()) {
    token.push_back(static_cast<char>(c));
    is.get();
  }
  if (is.peek() == 'i') {
    // An "i" or "in" that is not completed is consumed all the same.
    is.get();
    if (is.peek() == 'n') {
      is.get();
      if (is.peek() == 'f') {
        token.append("inf");
        is.get();
      }
    }
  }
  x = parseText(token);
  return is;
}

}  // namespace lpconv
