// Conversions between QQ and the long floating type dbl_t.

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <string_view>

#include "numbers/messages.h"
#include "numbers/precision_exceptions.h"
#include "numbers/qq.h"

namespace lpconv {

namespace {

constexpr std::uint64_t kPowersOfTen[] = {1ull,
                                          10ull,
                                          100ull,
                                          1000ull,
                                          10000ull,
                                          100000ull,
                                          1000000ull,
                                          10000000ull,
                                          100000000ull,
                                          1000000000ull,
                                          10000000000ull,
                                          100000000000ull,
                                          1000000000000ull,
                                          10000000000000ull,
                                          100000000000000ull,
                                          1000000000000000ull,
                                          10000000000000000ull,
                                          100000000000000000ull,
                                          1000000000000000000ull,
                                          10000000000000000000ull};
constexpr int kLargestPowerOfTen = 19;

void setFinite(QQ& r, bool positive, std::uint64_t whole, std::uint64_t numerator,
               std::uint64_t denominator) {
  r.isInf = false;
  mpz_set_ui(r.ganze.value, whole);
  mpz_set_ui(r.zaehler.value, numerator);
  mpz_set_ui(r.nenner.value, denominator);
  r.isPositive = positive || (whole == 0 && numerator == 0);
}

// Reads the printf forms "[-]digits[.digits][e(+|-)digits]" with at most 19 significant digits
// straight into canonical form. Returns false for any other text, which then goes through the
// general parser (they agree wherever both apply).
bool readDecimal(std::string_view text, QQ& r) {
  std::size_t i = 0;
  bool positive = true;
  if (i < text.size() && text[i] == '-') {
    positive = false;
    ++i;
  }
  std::uint64_t mantissa = 0;
  int significant = 0;
  long scale = 0;  // the value is mantissa · 10^scale
  bool anyDigit = false;
  const auto takeDigits = [&](bool afterPoint) {
    while (i < text.size() && text[i] >= '0' && text[i] <= '9') {
      anyDigit = true;
      const int digit = text[i] - '0';
      if (mantissa != 0 || digit != 0) {
        if (++significant > kLargestPowerOfTen) return false;
        mantissa = mantissa * 10 + static_cast<std::uint64_t>(digit);
      }
      if (afterPoint) --scale;
      ++i;
    }
    return true;
  };
  if (!takeDigits(false)) return false;
  if (i < text.size() && text[i] == '.') {
    ++i;
    if (!takeDigits(true)) return false;
  }
  if (!anyDigit) return false;
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    bool negativeExponent = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
      negativeExponent = text[i] == '-';
      ++i;
    }
    long exponent = 0;
    const auto [end, error] = std::from_chars(text.data() + i, text.data() + text.size(), exponent);
    if (error != std::errc() || end == text.data() + i || exponent > 100000) return false;
    i = static_cast<std::size_t>(end - text.data());
    scale += negativeExponent ? -exponent : exponent;
  }
  if (i != text.size()) return false;

  if (mantissa == 0) {
    setFinite(r, true, 0, 0, 1);
    return true;
  }
  if (scale >= 0) {
    if (scale <= kLargestPowerOfTen &&
        mantissa <= std::numeric_limits<std::uint64_t>::max() / kPowersOfTen[scale]) {
      setFinite(r, positive, mantissa * kPowersOfTen[scale], 0, 1);
      return true;
    }
    setFinite(r, positive, mantissa, 0, 1);
    ZZ scaleFactor;
    mpz_ui_pow_ui(scaleFactor.value, 10, static_cast<unsigned long>(scale));
    mpz_mul(r.ganze.value, r.ganze.value, scaleFactor.value);
    return true;
  }
  const long places = -scale;
  if (places <= kLargestPowerOfTen) {
    std::uint64_t denominator = kPowersOfTen[places];
    const std::uint64_t whole = mantissa / denominator;
    std::uint64_t numerator = mantissa % denominator;
    const std::uint64_t common = std::gcd(numerator, denominator);
    numerator /= common;
    denominator /= common;
    setFinite(r, positive, whole, numerator, numerator == 0 ? 1 : denominator);
    return true;
  }
  // 10^places exceeds the mantissa: only the factors 2 and 5 of the mantissa can cancel.
  long twos = 0;
  while (twos < places && mantissa % 2 == 0) {
    mantissa /= 2;
    ++twos;
  }
  long fives = 0;
  while (fives < places && mantissa % 5 == 0) {
    mantissa /= 5;
    ++fives;
  }
  setFinite(r, positive, 0, mantissa, 1);
  mpz_ui_pow_ui(r.nenner.value, 5, static_cast<unsigned long>(places - fives));
  mpz_mul_2exp(r.nenner.value, r.nenner.value, static_cast<unsigned long>(places - twos));
  return true;
}

// The nearest dbl_t to numerator / denominator (both positive), ties to even, including the
// subnormal range and overflow to infinity.
dbl_t nearestQuotient(const ZZ& numerator, const ZZ& denominator) {
  constexpr long kDigits = std::numeric_limits<dbl_t>::digits;
  constexpr long kLowestExponent = std::numeric_limits<dbl_t>::min_exponent - 1;  // of [1, 2)
  constexpr long kHighestExponent = std::numeric_limits<dbl_t>::max_exponent - 1;
  long e = static_cast<long>(mpz_sizeinbase(numerator.value, 2)) -
           static_cast<long>(mpz_sizeinbase(denominator.value, 2));
  // Now 2^(e-1) < value < 2^(e+1).
  if (e > kHighestExponent + 2) return std::numeric_limits<dbl_t>::infinity();
  if (e < kLowestExponent - kDigits - 2) return 0;
  ZZ n(numerator);
  ZZ d(denominator);
  if (e >= 0) {
    mpz_mul_2exp(d.value, d.value, static_cast<unsigned long>(e));
  } else {
    mpz_mul_2exp(n.value, n.value, static_cast<unsigned long>(-e));
  }
  if (mpz_cmp(n.value, d.value) < 0) --e;
  // The value in units of the last mantissa bit, rounded to an integer.
  const long quantum = std::max(e - (kDigits - 1), kLowestExponent - (kDigits - 1));
  mpz_set(n.value, numerator.value);
  mpz_set(d.value, denominator.value);
  if (quantum < 0) {
    mpz_mul_2exp(n.value, n.value, static_cast<unsigned long>(-quantum));
  } else {
    mpz_mul_2exp(d.value, d.value, static_cast<unsigned long>(quantum));
  }
  ZZ units;
  ZZ rest;
  mpz_fdiv_qr(units.value, rest.value, n.value, d.value);
  mpz_mul_2exp(rest.value, rest.value, 1);
  const int half = mpz_cmp(rest.value, d.value);
  if (half > 0 || (half == 0 && mpz_odd_p(units.value))) mpz_add_ui(units.value, units.value, 1);
  if (mpz_sizeinbase(units.value, 2) > static_cast<std::size_t>(kDigits)) {
    return std::ldexp(static_cast<dbl_t>(1), static_cast<int>(quantum + kDigits));
  }
  return std::ldexp(static_cast<dbl_t>(mpz_get_ui(units.value)), static_cast<int>(quantum));
}

dbl_t nearest(const QQ& x) {
  if (x.isZero()) return 0;
  ZZ numerator;
  mpz_mul(numerator.value, x.ganze.value, x.nenner.value);
  mpz_add(numerator.value, numerator.value, x.zaehler.value);
  const dbl_t magnitude = nearestQuotient(numerator, x.nenner);
  return x.isPositive ? magnitude : -magnitude;
}

// The value cut after `budget` significant decimal digits when its expansion needs more.
// Returns false when the expansion fits the budget (nothing is cut).
bool cutAfterDigits(const QQ& x, long budget, QQ& cut) {
  long significant = x.ganze.isZero() ? 0 : digitCount(x.ganze);
  ZZ rest(x.zaehler);
  ZZ digits;
  long places = 0;
  while (!rest.isZero()) {
    if (significant >= budget) {
      cut.isInf = false;
      cut.isPositive = x.isPositive;
      cut.ganze = x.ganze;
      cut.zaehler = std::move(digits);
      mpz_ui_pow_ui(cut.nenner.value, 10, static_cast<unsigned long>(places));
      normalize(cut);
      return true;
    }
    mpz_mul_ui(rest.value, rest.value, 10);
    mpz_mul_ui(digits.value, digits.value, 10);
    ZZ digit;
    mpz_fdiv_qr(digit.value, rest.value, rest.value, x.nenner.value);
    mpz_add(digits.value, digits.value, digit.value);
    ++places;
    if (significant > 0 || !digit.isZero()) ++significant;
  }
  return false;
}

}  // namespace

QQ fromDbl(dbl_t value) {
  // "nan" and "-nan" are what the stream writes; the parser's integer read rejects them.
  if (std::isnan(value)) throw std::invalid_argument("mpz_set_str");
  if (std::isinf(value)) return QQ(value > 0);
  const int precision = fullPrecisionDigits();
  QQ r;
  // Whole numbers below 10^precision are written with all their digits.
  if (precision >= 17 && std::fabs(value) < 1e17L && value == std::trunc(value)) {
    const long whole = static_cast<long>(value);
    return QQ(whole);
  }
  char buffer[64];
  std::string_view text;
  const auto narrow = static_cast<double>(value);
  if (static_cast<dbl_t>(narrow) == value && precision > 0 && precision < 40) {
    // The same decimal digits: both conversions round the same exact binary value.
    const auto result =
        std::to_chars(buffer, buffer + sizeof buffer, narrow, std::chars_format::general, precision);
    text = std::string_view(buffer, static_cast<std::size_t>(result.ptr - buffer));
  } else {
    const int length = std::snprintf(buffer, sizeof buffer, "%.*Lg", precision, value);
    if (length < 0 || length >= static_cast<int>(sizeof buffer)) {
      std::string longText(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
      std::snprintf(longText.data(), longText.size(), "%.*Lg", precision, value);
      longText.pop_back();
      return QQ(longText);
    }
    text = std::string_view(buffer, static_cast<std::size_t>(length));
  }
  if (readDecimal(text, r)) return r;
  return QQ(std::string(text));
}

dbl_t toDbl(const QQ& x, bool exact, bool allowCut) {
  if (x.isInf) {
    return x.isPositive ? std::numeric_limits<dbl_t>::infinity()
                        : -std::numeric_limits<dbl_t>::infinity();
  }
  static const long budget = digitLimit;
  if (exact) {
    if (digitCount(x.ganze) > budget) {
      throw PreCommaPrecisionException(messages::kIntegerPartNotExact);
    }
    QQ cut;
    if (cutAfterDigits(x, budget, cut)) {
      if (!allowCut) throw PostCommaPrecisionException(messages::kNotRepresentable);
      return nearest(cut);
    }
  }
  return nearest(x);
}

}  // namespace lpconv
