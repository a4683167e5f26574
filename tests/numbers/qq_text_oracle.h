#pragma once
// The QQ text reader as the literal algorithm states it, kept as the oracle of the iterative
// parser: one recursion per separator and per exponent letter, a copy of the rest at each level,
// and a stream reader that looks at every character through peek and get. Only texts whose
// exponents stay small may be given to it.

#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>
#include <lpconv/util/stream_helpers.h>

#include <cctype>
#include <istream>
#include <string>

namespace lpconv::oracle {

inline QQ parse(std::string text) {
  std::size_t start = 0;
  while (start < text.size() && std::isspace(static_cast<unsigned char>(text[start]))) ++start;
  text = text.substr(start);
  const std::size_t letter = text.find_first_of("eE");
  if (letter != std::string::npos) {
    const QQ mantissa = parse(text.substr(0, letter));
    std::string rest = text.substr(letter + 1);
    const bool negative = !rest.empty() && rest[0] == '-';
    if (!rest.empty() && (rest[0] == '+' || rest[0] == '-')) rest = rest.substr(1);
    rest = rest.substr(std::min(rest.size(), rest.find_first_not_of('0')));
    QQ exponent;
    if (!rest.empty()) exponent = negative ? -parse(rest) : parse(rest);
    text = toString(mantissa * power(QQ(10L), exponent));
  }
  QQ r;
  r.isPositive = true;
  if (!text.empty() && text[0] == '-') {
    r.isPositive = false;
    text = text.substr(1);
  } else if (!text.empty() && text[0] == '+') {
    text = text.substr(1);
  }
  if (text.empty()) reportFailure(messages::kParseError1);
  const std::size_t separator = text.find_first_of("/,.:");
  if (separator == std::string::npos) {
    if (text[0] == 'i') {
      if (text.size() < 2 || text[1] != 'n') reportFailure(messages::kParseError2);
      if (text.size() < 3 || text[2] != 'f') reportFailure(messages::kParseError3);
      return QQ(r.isPositive);
    }
    r.ganze = ZZ(text);
    if (r.ganze.isZero()) r.isPositive = true;
    return r;
  }
  const std::string before = text.substr(0, separator);
  std::string rest = text.substr(separator + 1);
  r.isInf = false;
  if (text[separator] == '/') {
    r.nenner = ZZ(rest);
    if (r.nenner.isZero()) reportFailure(messages::kDivisionByZero1);
    r.zaehler = ZZ(before);
    for (ZZ* field : {&r.zaehler, &r.nenner}) {
      if (field->sign() < 0) r.isPositive = !r.isPositive;
      abs(*field);
    }
    return normalize(r);
  }
  r.ganze = ZZ(before);
  if (text[separator] == ':') {
    if (!rest.empty() && rest[0] == '0') reportFailure(messages::kMalformedNumber1);
    const QQ t = parse(rest);
    if (!t.isPositive) reportFailure(messages::kMalformedNumber1);
    if (!t.ganze.isZero()) reportFailure(messages::kMalformedNumber2);
    r.zaehler = t.zaehler;
    r.nenner = t.nenner;
    return normalize(r);
  }
  long zeros = 0;
  while (!rest.empty() && rest[0] == '0') {
    rest = rest.substr(1);
    ++zeros;
  }
  const QQ t = parse(rest);
  r.zaehler = t.ganze;
  stripTrailingZeros(r.zaehler);
  zeros += digitCount(r.zaehler);
  r.nenner = pow(ZZ(10L), ZZ(zeros));
  return normalize(r);
}

inline void read(std::istream& is, QQ& x) {
  skipDelimitersAndComments(is, " \t\r\n");
  std::string token;
  for (int c = is.peek(); c >= '+' && c <= ':'; c = is.peek()) {
    token.push_back(static_cast<char>(c));
    is.get();
  }
  if (is.peek() == 'i') {
    is.get();
    if (is.peek() == 'n') {
      is.get();
      if (is.peek() == 'f') {
        token.append("inf");
        is.get();
      }
    }
  }
  x = parse(token);
}

}  // namespace lpconv::oracle
