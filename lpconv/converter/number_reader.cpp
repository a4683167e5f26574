#include <lpconv/converter/number_reader.h>

#include <cstdlib>

#include <lpconv/converter/text_scan.h>

namespace lpconv {

namespace {

// Integers of up to 15 digits are exact in a double and print as themselves with 17 digits.
constexpr int kMaxFastDigits = 15;

}  // namespace

double readDecimal(const char* text) {
  const char* p = text;
  while (isSpace(*p)) ++p;
  const char* unsignedPart = (*p == '+' || *p == '-') ? p + 1 : p;
  if (unsignedPart[0] == '0' && (unsignedPart[1] == 'x' || unsignedPart[1] == 'X')) {
    // The decimal reading stops before the "x": only the "0" converts.
    return *p == '-' ? -0.0 : 0.0;
  }
  return std::strtod(text, nullptr);
}

Coefficient readCoefficient(const char* text) {
  long value = 0;
  int digits = 0;
  while (digits <= kMaxFastDigits && isDigit(text[digits])) {
    value = value * 10 + (text[digits] - '0');
    ++digits;
  }
  const char next = text[digits];
  if (digits > 0 && digits <= kMaxFastDigits && next != '.' && next != 'e' && next != 'E' &&
      !isDigit(next)) {
    return Coefficient(value);
  }
  return Coefficient(fromDbl(static_cast<dbl_t>(readDecimal(text))));
}

}  // namespace lpconv
