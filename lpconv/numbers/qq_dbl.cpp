// Conversions between QQ and the long floating type dbl_t.

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <limits>
#include <numeric>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <lpconv/numbers/internal/binary_scale.h>
#include <lpconv/numbers/internal/wide_int.h>
#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/precision_exceptions.h>
#include <lpconv/numbers/qq.h>

namespace lpconv {

namespace {

using detail::u128;

constexpr int kLargestPowerOfTen = 19;  // 10^19 is the largest power of ten below 2^64

constexpr std::array<u128, 39> powersOfTen() {
  std::array<u128, 39> p{};
  p[0] = 1;
  for (std::size_t i = 1; i < p.size(); ++i) p[i] = p[i - 1] * 10;
  return p;
}
constexpr std::array<u128, 39> kPowersOfTen = powersOfTen();

void setSmall(QQ& r, bool positive, std::uint64_t whole, std::uint64_t numerator,
              std::uint64_t denominator) {
  r.isInf = false;
  detail::setUnsigned(r.ganze.value, whole);
  detail::setUnsigned(r.zaehler.value, numerator);
  detail::setUnsigned(r.nenner.value, denominator);
  r.isPositive = positive || (whole == 0 && numerator == 0);
}

// r = ±mantissa · 10^scale in canonical form.
void setDecimal(QQ& r, bool positive, std::uint64_t mantissa, long scale) {
  if (mantissa == 0) {
    setSmall(r, true, 0, 0, 1);
    return;
  }
  if (scale >= 0) {
    const auto factor =
        static_cast<std::uint64_t>(kPowersOfTen[std::min<long>(scale, kLargestPowerOfTen)]);
    if (scale <= kLargestPowerOfTen && mantissa <= UINT64_MAX / factor) {
      setSmall(r, positive, mantissa * factor, 0, 1);
      return;
    }
    setSmall(r, positive, mantissa, 0, 1);
    ZZ power;
    mpz_ui_pow_ui(power.value, 10, static_cast<unsigned long>(scale));
    mpz_mul_ui(r.ganze.value, power.value, mantissa);
    return;
  }
  // The denominator 10^places = 2^places · 5^places shares only twos and fives with the mantissa.
  const long places = -scale;
  long twos = std::min<long>(std::countr_zero(mantissa), places);
  mantissa >>= twos;
  long fives = 0;
  while (fives < places && mantissa % 5 == 0) {
    mantissa /= 5;
    ++fives;
  }
  twos = places - twos;
  fives = places - fives;
  if (twos < 64 && fives <= 27) {
    u128 denominator = static_cast<u128>(1) << twos;
    for (long i = 0; i < fives; ++i) denominator *= 5;
    if (denominator <= UINT64_MAX) {
      const auto d = static_cast<std::uint64_t>(denominator);
      setSmall(r, positive, mantissa / d, mantissa % d, d);
      return;
    }
  }
  // A denominator beyond 64 bits exceeds the mantissa: no integer part.
  setSmall(r, positive, 0, mantissa, 1);
  mpz_ui_pow_ui(r.nenner.value, 5, static_cast<unsigned long>(fives));
  mpz_mul_2exp(r.nenner.value, r.nenner.value, static_cast<unsigned long>(twos));
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
  setDecimal(r, positive, mantissa, scale);
  return true;
}

// A finite value > 0 as mantissa · 2^binaryScale with an odd mantissa.
struct BinaryValue {
  std::uint64_t mantissa;
  long binaryScale;
};

BinaryValue decompose(dbl_t value) {
  std::uint64_t mantissa = 0;
  long binaryScale = 0;
  if constexpr (std::numeric_limits<dbl_t>::digits == 64 &&
                std::numeric_limits<dbl_t>::max_exponent == 16384) {
    // The x87 extended format: 64 significand bits with an explicit leading bit, then the sign
    // and a 15-bit exponent biased by 16383. Reading the bits is much cheaper than frexp.
    unsigned char bytes[sizeof(dbl_t)];
    std::memcpy(bytes, &value, sizeof value);
    std::memcpy(&mantissa, bytes, sizeof mantissa);
    std::uint16_t top = 0;
    std::memcpy(&top, bytes + sizeof mantissa, sizeof top);
    const long biased = top & 0x7fff;
    binaryScale = (biased == 0 ? 1 : biased) - 16383 - 63;
  } else {
    int exponent = 0;
    const dbl_t fraction = std::frexp(value, &exponent);  // value = fraction · 2^exponent
    mantissa = static_cast<std::uint64_t>(std::ldexp(fraction, 64));
    binaryScale = exponent - 64;
  }
  const int zeros = std::countr_zero(mantissa);
  return {mantissa >> zeros, binaryScale + zeros};
}

// Rounds v = mantissa · 2^binaryScale (> 0) to `precision` significant decimal digits, ties to
// even, exactly as printf's "%.*Lg" does: v ≈ digits · 10^scale. Works in 128-bit integers and
// returns false when v is too large or too small for them (the caller then formats the text).
bool roundToDigits(BinaryValue v, int precision, std::uint64_t& digits, long& scale) {
  if (precision < 1 || precision > kLargestPowerOfTen) return false;
  const std::uint64_t mantissa = v.mantissa;
  const long binaryScale = v.binaryScale;
  // floor(log10(2^floor(log2 v))): the decimal exponent or one below it.
  const long log2 = 63 - std::countl_zero(mantissa) + binaryScale;
  long decimalExponent = (log2 * 78913) >> 18;
  const u128 lowest = kPowersOfTen[static_cast<std::size_t>(precision - 1)];
  const u128 limit = kPowersOfTen[static_cast<std::size_t>(precision)];
  for (int attempt = 0; attempt < 3; ++attempt) {
    // value · 10^shift = numerator / denominator, to be rounded to an integer.
    const long shift = precision - 1 - decimalExponent;
    if (shift > 38 || shift < -38) return false;
    u128 numerator = mantissa;
    u128 denominator = 1;
    if (shift >= 0) {
      const u128 factor = kPowersOfTen[static_cast<std::size_t>(shift)];
      if (factor > ~static_cast<u128>(0) / numerator) return false;
      numerator *= factor;
    } else {
      denominator = kPowersOfTen[static_cast<std::size_t>(-shift)];
    }
    if (binaryScale >= 0) {
      if (binaryScale >= 127 || numerator > (~static_cast<u128>(0) >> binaryScale)) return false;
      numerator <<= binaryScale;
    } else {
      // The denominator stays below 2^127 so that twice the remainder fits.
      if (-binaryScale >= 127 || denominator > (static_cast<u128>(1) << (127 + binaryScale))) {
        return false;
      }
      denominator <<= -binaryScale;
    }
    u128 quotient;
    u128 rest;
    if (shift >= 0 && binaryScale < 0) {
      // The common case: the denominator is a power of two.
      quotient = numerator >> -binaryScale;
      rest = numerator & (denominator - 1);
    } else {
      quotient = numerator / denominator;
      rest = numerator % denominator;
    }
    if (quotient < lowest) {
      --decimalExponent;
      continue;
    }
    if (quotient >= limit) {
      ++decimalExponent;
      continue;
    }
    const u128 twice = rest << 1;
    if (twice > denominator || (twice == denominator && (quotient & 1) != 0)) ++quotient;
    digits = static_cast<std::uint64_t>(quotient);
    scale = -shift;
    return true;
  }
  return false;
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
  e = detail::scaleIntoUnitOctave(n, d);
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

// The value of the text printf writes for value with "%.*Lg": read straight when it has the plain
// decimal form, else by the parser.
QQ fromPrintedText(dbl_t value, int precision) {
  char buffer[64];
  const int length = std::snprintf(buffer, sizeof buffer, "%.*Lg", precision, value);
  if (length >= 0 && length < static_cast<int>(sizeof buffer)) {
    const std::string_view text(buffer, static_cast<std::size_t>(length));
    QQ r;
    if (readDecimal(text, r)) return r;
    return QQ(std::string(text));
  }
  std::string text(static_cast<std::size_t>(std::max(length, 0)) + 1, '\0');
  std::snprintf(text.data(), text.size(), "%.*Lg", precision, value);
  text.pop_back();
  return QQ(text);
}

// fromDbl for a finite non-zero value. Every return names r, so the result is built in place.
QQ fromFinite(dbl_t value) {
  const bool positive = !std::signbit(value);
  const BinaryValue v = decompose(std::fabs(value));
  const int precision = fullPrecisionDigits();
  QQ r;
  // Whole numbers below 10^precision are written with all their digits.
  if (v.binaryScale >= 0 && v.binaryScale < 64 && precision >= 17) {
    const u128 whole = static_cast<u128>(v.mantissa) << v.binaryScale;
    if (whole < kPowersOfTen[17]) {
      setSmall(r, positive, static_cast<std::uint64_t>(whole), 0, 1);
      return r;
    }
  }
  std::uint64_t digits = 0;
  long scale = 0;
  if (roundToDigits(v, precision, digits, scale)) {
    setDecimal(r, positive, digits, scale);
    return r;
  }
  // Far out of the common range: the text itself.
  r = fromPrintedText(value, precision);
  return r;
}

}  // namespace

QQ fromDbl(dbl_t value) {
  // "nan" and "-nan" are what the stream writes; the parser's integer read rejects them.
  if (std::isnan(value)) throw std::invalid_argument("mpz_set_str");
  if (std::isinf(value)) return QQ(value > 0);
  if (value == 0) return QQ();
  return fromFinite(value);
}

dbl_t toDbl(const QQ& x, bool exact, bool allowCut) {
  if (x.isInf) {
    return x.isPositive ? std::numeric_limits<dbl_t>::infinity()
                        : -std::numeric_limits<dbl_t>::infinity();
  }
  static const long kBudget = digitLimit;
  if (exact) {
    if (digitCount(x.ganze) > kBudget) {
      throw PreCommaPrecisionException(messages::kIntegerPartNotExact);
    }
    QQ cut;
    if (cutAfterDigits(x, kBudget, cut)) {
      if (!allowCut) throw PostCommaPrecisionException(messages::kNotRepresentable);
      return nearest(cut);
    }
  }
  return nearest(x);
}

}  // namespace lpconv
