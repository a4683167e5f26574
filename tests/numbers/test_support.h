#pragma once
// Shared pieces of the number tests: random values, the mpq_t oracle and the canonical-form check.

#include <gmp.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <random>
#include <string>

#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>
#include <stdexcept>

namespace lpconv::testing {

// An mpq_t that clears itself.
class Rational {
 public:
  Rational() { mpq_init(value); }
  ~Rational() { mpq_clear(value); }
  Rational(const Rational&) = delete;
  Rational& operator=(const Rational&) = delete;
  mpq_t value;
};

// The exact value of a finite QQ, built from its fields whatever their state.
inline void toRational(const QQ& x, mpq_t out) {
  mpz_t numerator;
  mpz_init(numerator);
  mpz_mul(numerator, x.ganze.value, x.nenner.value);
  mpz_add(numerator, numerator, x.zaehler.value);
  if (!x.isPositive) mpz_neg(numerator, numerator);
  mpq_set_num(out, numerator);
  mpq_set_den(out, x.nenner.value);
  mpq_canonicalize(out);
  mpz_clear(numerator);
}

// Canonical form of a finite value: non-negative parts, a proper reduced fraction, nenner 1 for
// no fraction, and no negative zero.
inline ::testing::AssertionResult isCanonical(const QQ& x) {
  if (x.isInf) {
    if (mpz_cmp_ui(x.ganze.value, 1) != 0 || x.zaehler.sign() != 0 ||
        mpz_cmp_ui(x.nenner.value, 1) != 0) {
      return ::testing::AssertionFailure()
             << "infinity with fields " << x.ganze << "," << x.zaehler << "," << x.nenner;
    }
    return ::testing::AssertionSuccess();
  }
  const std::string fields = std::string(x.isPositive ? "+" : "-") + toString(x.ganze) + " " +
                             toString(x.zaehler) + "/" + toString(x.nenner);
  if (x.ganze.sign() < 0 || x.zaehler.sign() < 0 || x.nenner.sign() <= 0) {
    return ::testing::AssertionFailure() << "sign in a field: " << fields;
  }
  if (mpz_cmp(x.zaehler.value, x.nenner.value) >= 0) {
    return ::testing::AssertionFailure() << "improper fraction: " << fields;
  }
  if (x.zaehler.sign() == 0 && mpz_cmp_ui(x.nenner.value, 1) != 0) {
    return ::testing::AssertionFailure() << "zero fraction over a denominator: " << fields;
  }
  mpz_t g;
  mpz_init(g);
  mpz_gcd(g, x.zaehler.value, x.nenner.value);
  const bool reduced = x.zaehler.sign() == 0 || mpz_cmp_ui(g, 1) == 0;
  mpz_clear(g);
  if (!reduced) return ::testing::AssertionFailure() << "fraction not reduced: " << fields;
  if (x.ganze.sign() == 0 && x.zaehler.sign() == 0 && !x.isPositive) {
    return ::testing::AssertionFailure() << "negative zero";
  }
  return ::testing::AssertionSuccess();
}

// Whether x holds exactly the rational r.
inline ::testing::AssertionResult equalsRational(const QQ& x, const mpq_t r) {
  if (x.isInf) return ::testing::AssertionFailure() << "infinite result " << toString(x);
  Rational value;
  toRational(x, value.value);
  if (mpq_equal(value.value, r) == 0) {
    char* expected = mpq_get_str(nullptr, 10, r);
    ::testing::AssertionResult failure = ::testing::AssertionFailure()
                                         << "got " << toString(x) << ", expected " << expected;
    void (*release)(void*, std::size_t);
    mp_get_memory_functions(nullptr, nullptr, &release);
    release(expected, std::strlen(expected) + 1);
    return failure;
  }
  return ::testing::AssertionSuccess();
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

// The exact standard-error text of a failure report, as an anchored regular expression.
inline std::string failurePattern(const char* message) {
  std::string pattern = "^\n\\*\\*\\* FAIL: ";
  for (const char* p = message; *p != '\0'; ++p) {
    if (std::string("\\^$.|?*+()[]{}").find(*p) != std::string::npos) pattern += '\\';
    pattern += *p;
  }
  return pattern + "\n$";
}

// Random integers of a chosen bit size (0 to maxBits), biased towards small and one-limb values
// where the fast paths live.
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

  // A non-negative integer with a random size class.
  ZZ magnitude() {
    ZZ z;
    switch (below(6)) {
      case 0:
        mpz_set_ui(z.value, below(4));
        break;
      case 1:
        mpz_set_ui(z.value, below(100));
        break;
      case 2:
        mpz_set_ui(z.value, engine_());
        break;
      case 3:
        mpz_urandomb(z.value, state_, 65 + below(64));
        break;
      default:
        mpz_rrandomb(z.value, state_, below(300));
        break;
    }
    return z;
  }

  // A canonical finite QQ: integers, proper fractions and mixed numbers, both signs, zero.
  QQ finite() {
    ZZ numerator = magnitude();
    ZZ denominator;
    switch (below(4)) {
      case 0:
        denominator = ZZ(1L);
        break;
      case 1:
        mpz_set_ui(denominator.value, 1 + below(12));
        break;
      default:
        denominator = magnitude();
        if (denominator.isZero()) denominator = ZZ(7L);
        break;
    }
    if (below(2) == 0) negate(numerator);
    return QQ(numerator, denominator);
  }

  // Mostly finite values, sometimes an infinity of either sign.
  QQ any() {
    if (below(8) == 0) return QQ(below(2) == 0);
    return finite();
  }

 private:
  std::mt19937_64 engine_;
  gmp_randstate_t state_;
};

}  // namespace lpconv::testing
