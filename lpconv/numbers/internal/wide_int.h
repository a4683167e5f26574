#pragma once
// Native 128-bit arithmetic for the fast paths of the exact numbers: operands whose integers fit
// in one machine word are combined without GMP calls and written back into the mpz fields.

#include <gmp.h>

#include <cstdint>

#include <lpconv/numbers/zz.h>

namespace lpconv::detail {

// GCC and Clang provide 128-bit integers on every 64-bit target this builds for.
__extension__ typedef unsigned __int128 u128;
__extension__ typedef __int128 i128;

// Parts below 2^62 leave room for the sums and differences the fast paths form.
inline constexpr std::uint64_t kSmallLimit = std::uint64_t{1} << 62;

// Whether z (assumed non-negative) is below kSmallLimit; its value goes to `out`.
inline bool smallPart(const ZZ& z, std::uint64_t& out) {
  if (mpz_size(z.value) > 1) return false;
  out = mpz_getlimbn(z.value, 0);
  return out < kSmallLimit;
}

// target = v.
inline void setWide(mpz_ptr target, u128 v) {
  const auto high = static_cast<std::uint64_t>(v >> 64);
  if (high == 0) {
    setUnsigned(target, static_cast<std::uint64_t>(v));
    return;
  }
  static_assert(sizeof(mp_limb_t) == sizeof(std::uint64_t), "64-bit limbs expected");
  mp_limb_t* limbs = mpz_limbs_write(target, 2);
  limbs[0] = static_cast<mp_limb_t>(v);
  limbs[1] = high;
  mpz_limbs_finish(target, 2);
}

}  // namespace lpconv::detail
