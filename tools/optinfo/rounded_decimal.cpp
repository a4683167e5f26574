#include "rounded_decimal.h"

#include <gmp.h>

#include <string>

namespace lpconv {

namespace {

__extension__ typedef unsigned __int128 Wide;

// Whether a / 10^places (a > 0 with no trailing zero) lies within 10^-places of some p/d with
// 2 <= d <= kSimpleDenominator, other than exactly: |a d - p 10^places| <= d for the nearest p.
bool nearSimpleFraction(Wide a, Wide scale) {
  for (Wide d = 2; d <= static_cast<Wide>(kSimpleDenominator); ++d) {
    const Wide product = a * d;
    const Wide remainder = product % scale;
    const Wide distance = remainder * 2 <= scale ? remainder : scale - remainder;
    if (distance != 0 && distance <= d) return true;
  }
  return false;
}

bool nearSimpleFraction(const mpz_t a, const mpz_t scale) {
  mpz_t product, remainder;
  mpz_inits(product, remainder, nullptr);
  bool near = false;
  for (unsigned long d = 2; d <= static_cast<unsigned long>(kSimpleDenominator) && !near; ++d) {
    mpz_mul_ui(product, a, d);
    mpz_fdiv_r(remainder, product, scale);
    mpz_mul_2exp(product, remainder, 1);
    if (mpz_cmp(product, scale) > 0) mpz_sub(remainder, scale, remainder);
    near = mpz_sgn(remainder) != 0 && mpz_cmp_ui(remainder, d) <= 0;
  }
  mpz_clears(product, remainder, nullptr);
  return near;
}

// The decimal digits of a positive integer.
long digitsOf(const mpz_t a) {
  const std::size_t estimate = mpz_sizeinbase(a, 10);
  if (estimate < static_cast<std::size_t>(kRoundedDecimalDigits))
    return static_cast<long>(estimate);
  std::string text(estimate + 2, '\0');
  mpz_get_str(text.data(), 10, a);
  return static_cast<long>(std::char_traits<char>::length(text.data()));
}

// A non-negative integer below 2^128.
Wide wideOf(const mpz_t x) {
  Wide result = 0;
  for (std::size_t k = mpz_size(x); k > 0; --k) {
    result = (result << 64) | static_cast<Wide>(mpz_getlimbn(x, static_cast<mp_size_t>(k - 1)));
  }
  return result;
}

}  // namespace

bool looksLikeRoundedFraction(const Coefficient& value) {
  if (value.isZero()) return false;
  if (value.isInline() ? value.denominator() == 1 : value.big().isInf) return false;
  mpz_t numerator, denominator, factor, a;
  mpz_inits(numerator, denominator, factor, a, nullptr);
  if (value.isInline()) {
    const std::int64_t n = value.numerator();
    mpz_set_ui(numerator,
               n < 0 ? 0ul - static_cast<unsigned long>(n) : static_cast<unsigned long>(n));
    mpz_set_ui(denominator, static_cast<unsigned long>(value.denominator()));
  } else {
    const QQ& q = value.big();
    mpz_mul(numerator, q.ganze.get(), q.nenner.get());
    mpz_add(numerator, numerator, q.zaehler.get());
    mpz_set(denominator, q.nenner.get());
  }
  // The value is a decimal when its denominator is 2^twos 5^fives; then it is a / 10^places.
  mpz_set_ui(factor, 2);
  const unsigned long twos = mpz_remove(denominator, denominator, factor);
  mpz_set_ui(factor, 5);
  const unsigned long fives = mpz_remove(denominator, denominator, factor);
  const unsigned long places = twos > fives ? twos : fives;
  bool looks = false;
  if (mpz_cmp_ui(denominator, 1) == 0 && places > 0) {
    mpz_ui_pow_ui(factor, 2, places - twos);
    mpz_mul(a, numerator, factor);
    mpz_ui_pow_ui(factor, 5, places - fives);
    mpz_mul(a, a, factor);
    if (digitsOf(a) >= kRoundedDecimalDigits) {
      mpz_ui_pow_ui(factor, 10, places);
      if (places <= 30 && mpz_sizeinbase(a, 2) <= 100) {
        looks = nearSimpleFraction(wideOf(a), wideOf(factor));
      } else {
        looks = nearSimpleFraction(a, factor);
      }
    }
  }
  mpz_clears(numerator, denominator, factor, a, nullptr);
  return looks;
}

}  // namespace lpconv
