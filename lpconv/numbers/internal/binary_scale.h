#pragma once
// Scaling a positive fraction into [1, 2) by a power of two: the first step of the conversion to
// dbl_t and of the binary logarithm.

#include <gmp.h>

#include <lpconv/numbers/zz.h>

namespace lpconv::detail {

// Multiplies numerator / denominator (both positive) by 2^-k in place so that it lies in [1, 2),
// and returns k = floor(log2(numerator / denominator)).
inline long scaleIntoUnitOctave(ZZ& numerator, ZZ& denominator) {
  long k = static_cast<long>(mpz_sizeinbase(numerator.value, 2)) -
           static_cast<long>(mpz_sizeinbase(denominator.value, 2));
  if (k >= 0) {
    mpz_mul_2exp(denominator.value, denominator.value, static_cast<unsigned long>(k));
  } else {
    mpz_mul_2exp(numerator.value, numerator.value, static_cast<unsigned long>(-k));
  }
  if (mpz_cmp(numerator.value, denominator.value) < 0) {
    --k;
    mpz_mul_2exp(numerator.value, numerator.value, 1);
  }
  return k;
}

}  // namespace lpconv::detail
