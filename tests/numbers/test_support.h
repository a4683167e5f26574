#pragma once
// Shared pieces of the number tests: random values, GMP's rationals as the oracle, the
// canonical-form check and the outcome of an operation that may report a failure.

#include <gmp.h>
#include <gtest/gtest.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>

#include <cstdint>
#include <random>
#include <stdexcept>
#include <string>

namespace lpconv::testing {

// An mpq_t that clears itself.
struct Rational {
  Rational() { mpq_init(value); }
  ~Rational() { mpq_clear(value); }
  Rational(const Rational&) = delete;
  Rational& operator=(const Rational&) = delete;
  mpq_t value;
};

// The exact value of a finite QQ, built from its fields whatever their state.
inline void toRational(const QQ& x, mpq_t out) {
  mpz_ptr numerator = mpq_numref(out);
  mpz_mul(numerator, x.ganze.value, x.nenner.value);
  mpz_add(numerator, numerator, x.zaehler.value);
  if (!x.isPositive) mpz_neg(numerator, numerator);
  mpz_set(mpq_denref(out), x.nenner.value);
  mpq_canonicalize(out);
}

// Canonical form: non-negative parts, a proper reduced fraction, nenner 1 for no fraction, no
// negative zero; an infinity has ganze 1 and the fraction 0/1.
inline ::testing::AssertionResult isCanonical(const QQ& x) {
  mpz_t g;
  mpz_init(g);
  mpz_gcd(g, x.zaehler.value, x.nenner.value);
  const bool reduced =
      mpz_cmp_ui(g, 1) == 0 || (x.zaehler.isZero() && mpz_cmp_ui(x.nenner.value, 1) == 0);
  mpz_clear(g);
  const bool ok = x.isInf ? mpz_cmp_ui(x.ganze.value, 1) == 0 && x.zaehler.isZero() &&
                                mpz_cmp_ui(x.nenner.value, 1) == 0
                          : x.ganze.sign() >= 0 && x.zaehler.sign() >= 0 && reduced &&
                                mpz_cmp(x.zaehler.value, x.nenner.value) < 0 &&
                                (x.isPositive || !x.isZero());
  if (ok) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure()
         << "not canonical: " << (x.isPositive ? "+" : "-") << x.ganze << " " << x.zaehler << "/"
         << x.nenner << (x.isInf ? " inf" : "");
}

// What f returns, or the message of the failure it reports (through throwFailure), or the
// what() of the std::invalid_argument it throws.
template <typename F>
std::string outcome(F f) {
  const FailureHandler previous = setFailureHandler(throwFailure);
  std::string result;
  try {
    result = f();
  } catch (const FailureException& e) {
    result = e.what();
  } catch (const std::invalid_argument& e) {
    result = e.what();
  }
  setFailureHandler(previous);
  return result;
}

// Random integers of a random size class, biased towards small and one-limb values where the
// fast paths live, and canonical QQ values built from them.
class RandomNumbers {
 public:
  explicit RandomNumbers(std::uint64_t seed) : engine_(seed) {
    gmp_randinit_mt(state_);
    gmp_randseed_ui(state_, static_cast<unsigned long>(seed));
  }
  ~RandomNumbers() { gmp_randclear(state_); }
  RandomNumbers(const RandomNumbers&) = delete;
  RandomNumbers& operator=(const RandomNumbers&) = delete;

  std::mt19937_64& engine() { return engine_; }
  std::uint64_t below(std::uint64_t n) {
    return std::uniform_int_distribution<std::uint64_t>(0, n - 1)(engine_);
  }

  ZZ magnitude() {
    ZZ z;
    const std::uint64_t sizeClass = below(6);
    if (sizeClass < 3)
      mpz_set_ui(z.value, sizeClass == 0 ? below(4) : sizeClass == 1 ? below(100) : engine_());
    if (sizeClass == 3) mpz_urandomb(z.value, state_, 65 + below(64));
    if (sizeClass > 3) mpz_rrandomb(z.value, state_, below(300));
    return z;
  }

  // Integers, proper fractions and mixed numbers, both signs, zero.
  QQ finite() {
    ZZ numerator = magnitude();
    ZZ denominator = below(4) == 0   ? ZZ(1L)
                     : below(2) == 0 ? ZZ(static_cast<long>(1 + below(12)))
                                     : magnitude();
    if (denominator.isZero()) denominator = ZZ(7L);
    if (below(2) == 0) negate(numerator);
    return QQ(numerator, denominator);
  }

  // Mostly finite values, sometimes an infinity of either sign.
  QQ any() { return below(8) == 0 ? QQ(below(2) == 0) : finite(); }

 private:
  std::mt19937_64 engine_;
  gmp_randstate_t state_;
};

}  // namespace lpconv::testing
