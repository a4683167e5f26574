#include <lpconv/formats/exact_number.h>

#include <gmp.h>

#include <cstdint>
#include <string>

#include <lpconv/numbers/internal/powers_of_ten.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

bool equalsIgnoringCase(std::string_view text, std::string_view lowerWord) {
  if (text.size() != lowerWord.size()) return false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (c != lowerWord[i]) return false;
  }
  return true;
}

// A decimal digit string as a GMP integer (leading zeros are fine: base 10, not base 0).
ZZ integerOf(std::string_view digits) {
  ZZ z;
  std::string text(digits);
  mpz_set_str(z.value, text.c_str(), 10);
  return z;
}

ZZ powerOfTen(unsigned long exponent) {
  ZZ z;
  mpz_ui_pow_ui(z.value, 10, exponent);
  return z;
}

// value = (negative ? -1 : 1) * digits * 10^scale, digits being the mantissa without its point.
Coefficient scaled(bool negative, std::string_view digits, long scale) {
  // Leading zeros carry no value.
  std::size_t first = 0;
  while (first + 1 < digits.size() && digits[first] == '0') ++first;
  digits.remove_prefix(first);
  if (digits == "0") return Coefficient();

  if (digits.size() <= 17 && scale >= -17 && scale <= 17) {
    std::int64_t m = 0;
    for (char c : digits) m = m * 10 + (c - '0');
    if (scale >= 0) {
      const std::int64_t p = detail::kPowersOfTen[scale];
      if (m < Coefficient::kInlineLimit / p)
        return Coefficient::fromLowestTerms(negative ? -m * p : m * p, 1);
    } else {
      // The denominator is 10^k: cancelling the factors 2 and 5 that m shares with it gives
      // lowest terms without a general gcd.
      std::int64_t d = detail::kPowersOfTen[-scale];
      int twos = -static_cast<int>(scale);
      int fives = twos;
      while (twos > 0 && (m & 1) == 0) {
        m >>= 1;
        d >>= 1;
        --twos;
      }
      while (fives > 0 && m % 5 == 0) {
        m /= 5;
        d /= 5;
        --fives;
      }
      return Coefficient::fromLowestTerms(negative ? -m : m, d);
    }
  }
  ZZ m = integerOf(digits);
  QQ q = scale >= 0 ? QQ(m * powerOfTen(static_cast<unsigned long>(scale)))
                    : QQ(m, powerOfTen(static_cast<unsigned long>(-scale)));
  if (negative) q = -q;
  return Coefficient(q);
}

}  // namespace

bool isInfinityText(std::string_view text, bool& positive) {
  positive = true;
  if (!text.empty() && (text[0] == '+' || text[0] == '-')) {
    positive = text[0] == '+';
    text.remove_prefix(1);
  }
  return equalsIgnoringCase(text, "inf") || equalsIgnoringCase(text, "infinity");
}

NumberError parseExactNumber(std::string_view text, Coefficient& value) {
  if (text.empty()) return NumberError::empty;
  bool positive = true;
  if (isInfinityText(text, positive)) return NumberError::infinity;
  std::string_view rest = text;
  bool negative = false;
  if (rest[0] == '+' || rest[0] == '-') {
    negative = rest[0] == '-';
    rest.remove_prefix(1);
  }
  if (equalsIgnoringCase(rest, "nan")) return NumberError::notANumber;
  if (rest.size() > 1 && rest[0] == '0' && (rest[1] == 'x' || rest[1] == 'X')) {
    return NumberError::hexadecimal;
  }

  std::size_t i = 0;
  while (i < rest.size() && isDigit(rest[i])) ++i;
  const std::size_t integerDigits = i;

  if (i < rest.size() && rest[i] == '/') {
    // p/q: both parts plain digit strings.
    const std::string_view numerator = rest.substr(0, i);
    const std::string_view denominator = rest.substr(i + 1);
    if (numerator.empty() || denominator.empty()) return NumberError::malformed;
    for (char c : denominator) {
      if (!isDigit(c)) return NumberError::malformed;
    }
    if (denominator.find_first_not_of('0') == std::string_view::npos) {
      return NumberError::zeroDenominator;
    }
    QQ q(integerOf(numerator), integerOf(denominator));
    if (negative) q = -q;
    value = Coefficient(q);
    return NumberError::none;
  }

  std::string digits(rest.substr(0, integerDigits));
  long fractionDigits = 0;
  if (i < rest.size() && rest[i] == '.') {
    ++i;
    const std::size_t start = i;
    while (i < rest.size() && isDigit(rest[i])) ++i;
    digits.append(rest.substr(start, i - start));
    fractionDigits = static_cast<long>(i - start);
  }
  if (digits.empty()) return NumberError::malformed;

  long exponent = 0;
  if (i < rest.size() && (rest[i] == 'e' || rest[i] == 'E')) {
    ++i;
    bool exponentNegative = false;
    if (i < rest.size() && (rest[i] == '+' || rest[i] == '-')) {
      exponentNegative = rest[i] == '-';
      ++i;
    }
    const std::size_t start = i;
    bool tooLarge = false;
    while (i < rest.size() && isDigit(rest[i])) {
      exponent = exponent * 10 + (rest[i] - '0');
      if (exponent > kMaxDecimalExponent) {
        tooLarge = true;
        exponent = kMaxDecimalExponent + 1;
      }
      ++i;
    }
    if (i == start) return NumberError::malformed;
    if (i != rest.size()) return NumberError::malformed;
    if (tooLarge) return NumberError::exponentRange;
    if (exponentNegative) exponent = -exponent;
  }
  if (i != rest.size()) return NumberError::malformed;

  value = scaled(negative, digits, exponent - fractionDigits);
  return NumberError::none;
}

const char* describe(NumberError error) {
  switch (error) {
    case NumberError::none:
      return "no error";
    case NumberError::empty:
      return "a number is missing";
    case NumberError::malformed:
      return "not a number";
    case NumberError::hexadecimal:
      return "hexadecimal numbers are not supported";
    case NumberError::notANumber:
      return "NaN is not a number an exact model can hold";
    case NumberError::infinity:
      return "an infinite value is not allowed here";
    case NumberError::exponentRange:
      return "exponent out of range (at most 1000000 in magnitude)";
    case NumberError::zeroDenominator:
      return "zero denominator";
  }
  return "not a number";
}

}  // namespace lpconv

namespace lpconv {

namespace {

// value = sign * numerator / denominator, denominator > 0, in lowest terms.
struct Fraction {
  bool negative = false;
  ZZ numerator;
  ZZ denominator;
};

Fraction fractionOf(const Coefficient& value) {
  Fraction f;
  if (value.isInline()) {
    const std::int64_t n = value.numerator();
    f.negative = n < 0;
    f.numerator = ZZ(static_cast<unsigned long>(n < 0 ? -n : n));
    f.denominator = ZZ(static_cast<unsigned long>(value.denominator()));
    return f;
  }
  const QQ& q = value.big();
  f.negative = !q.isPositive;
  mpz_mul(f.numerator.value, q.ganze.value, q.nenner.value);
  mpz_add(f.numerator.value, f.numerator.value, q.zaehler.value);
  f.denominator = q.nenner;
  return f;
}

// How often p divides z (z > 0); z is divided by p that often.
unsigned long removeFactor(ZZ& z, unsigned long p) {
  unsigned long count = 0;
  while (mpz_divisible_ui_p(z.value, p) != 0) {
    mpz_divexact_ui(z.value, z.value, p);
    ++count;
  }
  return count;
}

std::string digitsOf(const ZZ& z) {
  std::string text(mpz_sizeinbase(z.value, 10) + 1, '\0');
  mpz_get_str(text.data(), 10, z.value);
  text.resize(std::char_traits<char>::length(text.c_str()));
  return text;
}

}  // namespace

void appendExactText(std::string& out, const Coefficient& value) {
  if (!value.isInline() && value.big().isInf) {
    out += value.big().isPositive ? "inf" : "-inf";
    return;
  }
  if (value.isZero()) {
    out += '0';
    return;
  }
  if (value.isInline() && value.denominator() == 1) {
    out += std::to_string(value.numerator());
    return;
  }
  Fraction f = fractionOf(value);
  ZZ rest = f.denominator;
  const unsigned long twos = removeFactor(rest, 2);
  const unsigned long fives = removeFactor(rest, 5);
  if (mpz_cmp_ui(rest.value, 1) != 0) {
    if (f.negative) out += '-';
    out += digitsOf(f.numerator);
    out += '/';
    out += digitsOf(f.denominator);
    return;
  }
  // A terminating decimal: numerator * 10^k / denominator with k = max(twos, fives).
  const unsigned long k = twos > fives ? twos : fives;
  ZZ scaledValue;
  mpz_ui_pow_ui(scaledValue.value, 10, k);
  mpz_mul(scaledValue.value, scaledValue.value, f.numerator.value);
  mpz_divexact(scaledValue.value, scaledValue.value, f.denominator.value);
  std::string digits = digitsOf(scaledValue);
  // digits * 10^-k; the significant digits are digits without trailing zeros.
  long exponent = -static_cast<long>(k);
  while (digits.size() > 1 && digits.back() == '0') {
    digits.pop_back();
    ++exponent;
  }
  std::string plain;
  if (exponent >= 0) {
    plain = digits + std::string(static_cast<std::size_t>(exponent), '0');
  } else if (static_cast<std::size_t>(-exponent) < digits.size()) {
    plain = digits;
    plain.insert(plain.size() - static_cast<std::size_t>(-exponent), 1, '.');
  } else {
    plain.assign("0.");
    plain.append(static_cast<std::size_t>(-exponent) - digits.size(), '0');
    plain += digits;
  }
  // Scientific form d[.ddd]e[+-]X with X the exponent of the first digit.
  const long leading = exponent + static_cast<long>(digits.size()) - 1;
  std::string scientific = digits.substr(0, 1);
  if (digits.size() > 1) scientific += "." + digits.substr(1);
  scientific += leading < 0 ? "e-" : "e+";
  scientific += std::to_string(leading < 0 ? -leading : leading);
  if (f.negative) out += '-';
  out += scientific.size() < plain.size() ? scientific : plain;
}

std::string exactText(const Coefficient& value) {
  std::string out;
  appendExactText(out, value);
  return out;
}

}  // namespace lpconv
