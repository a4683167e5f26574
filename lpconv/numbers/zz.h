#pragma once
// Arbitrary-precision signed integers: a thin value class over one GMP integer.
//
// The shared one. Like GMP's own fresh integers, a ZZ holding 0 may own no limbs (_mp_alloc 0).
// A QQ goes further for the value 1, its most common field value (the nenner of every integer,
// the ganze of an infinity, the zaehler of 1/n): such a field has _mp_alloc 0, _mp_size 1 and
// _mp_d pointing at one read-only limb holding 1 that all of them share. Every GMP function
// reads it as 1, writes into it only after allocating fresh limbs, and mpz_clear leaves it
// alone, so a QQ integer, 0 or infinity takes no heap for it.
//
// Built with LPCONV_SHARED_ONE=0 (the CMake option LPCONV_SHARED_ONE=OFF), there is no shared
// one: a field holding 1 owns its limb like any other integer, so raw GMP calls need no care;
// only 0 stays without limbs, as GMP itself keeps it.
//
// Where it appears: only in the fields of QQ values (made by QQ's constructors, copies and
// operations), and in a ZZ that a field was moved or swapped into. The ZZ constructors, ZZ
// copies and ZZ copy assignment always leave a non-zero ZZ with limbs of its own.
//
// The one trap: a GMP call whose output is also one of its inputs, or that keeps the output's old
// value (mpz_add(z, z, x), mpz_add_ui(z, z, 1), mpz_mul_2exp(z, z, k), mpz_divexact(z, z, g),
// mpz_limbs_modify, mpz_realloc2, ...), allocates first and then reads the fresh, uninitialised
// limbs instead of the old value. Every operation of ZZ and QQ takes care of that. Code that
// writes into a QQ field (or a ZZ moved out of one) with such a raw GMP call in place must call
// ensureOwnLimbs() on it first. Calls whose outputs are not among their inputs (mpz_set,
// mpz_mul(z, x, y), mpz_set_str, ...) and the sign changes mpz_neg(z, z) and mpz_abs(z, z) need
// nothing.

#include <gmp.h>

// GMP 6.2 made every fresh integer limbless (_mp_alloc 0); 0 and the shared one rely on it.
#if !defined(__GNU_MP_VERSION) || __GNU_MP_VERSION < 6 || \
    (__GNU_MP_VERSION == 6 && __GNU_MP_VERSION_MINOR < 2)
#error "lpconv needs GMP 6.2 or later"
#endif

// Whether QQ fields holding 1 share one read-only limb (see above); set by the build.
#ifndef LPCONV_SHARED_ONE
#define LPCONV_SHARED_ONE 1
#endif

#include <iosfwd>
#include <string>
#include <utility>

namespace lpconv {

namespace detail {

// The limb of the shared one. It lives in read-only memory: a stray write through it faults
// instead of changing every 1 in the process.
inline constexpr mp_limb_t kSharedOneLimb = 1;

// z = v for v in {-1, 0, 1}, without limbs (the shared one for 1 and -1; without the shared one,
// 1 and -1 get a limb of their own); whatever limbs z owned are the caller's to release.
inline void setWithoutLimbs(mpz_ptr z, int v) {
  z->_mp_alloc = 0;
  z->_mp_size = LPCONV_SHARED_ONE ? v : 0;
  z->_mp_d = const_cast<mp_limb_t*>(&kSharedOneLimb);
  if (!LPCONV_SHARED_ONE && v != 0) mpz_set_si(z, v);
}

// Whether z is 1, without a call into GMP (the readers ask it once per element).
inline bool isOne(mpz_srcptr z) { return z->_mp_size == 1 && z->_mp_d[0] == 1; }

// z = v. An integer without limbs stays without for 0 and 1 (GMP's mpz_set_ui would give it a
// limb even for 0); an integer with limbs keeps them. For QQ fields, work registers and integers
// about to be moved into a QQ.
inline void setUnsigned(mpz_ptr z, unsigned long v) {
  if (z->_mp_alloc == 0 && v <= 1) {
    setWithoutLimbs(z, static_cast<int>(v));
  } else {
    mpz_set_ui(z, v);
  }
}

// Initialises z, whose limbs (if any) are not its own, as a copy of `from` that keeps sharing
// the shared one. For QQ fields only.
inline void initSharing(mpz_ptr z, mpz_srcptr from) {
  if (from->_mp_alloc == 0) {
    *z = *from;
  } else {
    mpz_init_set(z, from);
  }
}

// z = from, sharing the shared one when z owns no limbs; z keeps limbs it owns. For QQ fields
// only.
inline void assignSharing(mpz_ptr z, mpz_srcptr from) {
  if (z->_mp_alloc == 0 && from->_mp_alloc == 0) {
    *z = *from;
  } else if (z != from) {
    mpz_set(z, from);
  }
}

// Gives z, which owns no limbs and is not 0, limbs of its own holding the same value.
void giveOwnLimbs(mpz_ptr z);

}  // namespace detail

class BigInt {
 public:
  // The GMP integer; initialised by every constructor, cleared by the destructor. It may be the
  // shared one (see the top of this file).
  mpz_t value;

  // 0 takes no heap.
  BigInt() { detail::setWithoutLimbs(value, 0); }
  // Integers convert implicitly.
  BigInt(long v) {
    if (v == 0) {
      detail::setWithoutLimbs(value, 0);
    } else {
      mpz_init_set_si(value, v);
    }
  }
  BigInt(unsigned long v) {
    if (v == 0) {
      detail::setWithoutLimbs(value, 0);
    } else {
      mpz_init_set_ui(value, v);
    }
  }
  BigInt(int v) : BigInt(static_cast<long>(v)) {}
  // Floating values are not integers; keeping them out also keeps sqrt(2.0) and the like from
  // binding to ZZ.
  BigInt(double) = delete;
  BigInt(long double) = delete;
  // Reads the text with GMP's base-0 rules ("0x" hex, "0b" binary, leading "0" octal, else
  // decimal; an optional "-"). Throws std::invalid_argument("mpz_set_str") for text GMP rejects,
  // the empty text included.
  BigInt(const std::string& text);
  BigInt(const char* text);
  // A copy of 0 takes no heap; any other copy has limbs of its own.
  BigInt(const BigInt& other) {
    if (other.value->_mp_size == 0) {
      detail::setWithoutLimbs(value, 0);
    } else {
      mpz_init_set(value, other.value);
    }
  }
  // Leaves `other` holding 0; costs no allocation. Takes the shared one along.
  BigInt(BigInt&& other) noexcept : BigInt() { std::swap(*value, *other.value); }
  // Leaves a non-zero value with limbs of its own, keeping those it had when they are enough.
  BigInt& operator=(const BigInt& other) {
    if (this != &other) mpz_set(value, other.value);
    return *this;
  }
  // Exchanges the two values.
  BigInt& operator=(BigInt&& other) noexcept {
    std::swap(*value, *other.value);
    return *this;
  }
  virtual ~BigInt() {
    if (value->_mp_alloc != 0) mpz_clear(value);
  }

  // Gives this integer limbs of its own if it is the shared one, keeping its value; to be called
  // before a raw GMP call that writes into `value` in place (see the top of this file). The
  // integer then keeps its own limbs until another value is moved or swapped into it.
  void ensureOwnLimbs() {
    if (value->_mp_alloc == 0 && value->_mp_size != 0) detail::giveOwnLimbs(value);
  }

  // Copies of shared constants built on first use.
  static BigInt zero();
  static BigInt one();

  mpz_srcptr get() const { return value; }
  mpz_ptr get() { return value; }

  // Sign of the value: -1, 0 or 1.
  int sign() const { return mpz_sgn(value); }
  bool isZero() const { return mpz_sgn(value) == 0; }

  BigInt& operator+=(const BigInt& b);
  BigInt& operator-=(const BigInt& b);
  BigInt& operator*=(const BigInt& b);
  // Floor quotient: -7 / 2 = -4. Division by 0 is GMP's own behaviour.
  BigInt& operator/=(const BigInt& b);
  // Remainder that is never negative, whatever the divisor's sign: -7 % 2 = 1, 7 % -2 = 1.
  BigInt& operator%=(const BigInt& b);
  BigInt& operator++();
  BigInt operator++(int);
};

using ZZ = BigInt;

// The full mpz_cmp result: negative, 0 or positive.
int cmp(const ZZ& a, const ZZ& b);

// The relational operators look only at the low 16 bits of the comparison result (zero test and
// sign bit of a 16-bit integer); the narrowing is part of the contract and only shows for
// operands more than 32,767 limbs apart in size.
bool operator==(const ZZ& a, const ZZ& b);
bool operator!=(const ZZ& a, const ZZ& b);
bool operator<(const ZZ& a, const ZZ& b);
bool operator>(const ZZ& a, const ZZ& b);
bool operator<=(const ZZ& a, const ZZ& b);
bool operator>=(const ZZ& a, const ZZ& b);

ZZ operator+(const ZZ& a, const ZZ& b);
ZZ operator-(const ZZ& a, const ZZ& b);
ZZ operator*(const ZZ& a, const ZZ& b);
ZZ operator/(const ZZ& a, const ZZ& b);
ZZ operator%(const ZZ& a, const ZZ& b);
ZZ operator-(const ZZ& a);
ZZ operator-(ZZ&& a);

// Each writes its result into the last argument and returns it; the result may be an input.
ZZ& add(const ZZ& a, const ZZ& b, ZZ& r);
ZZ& sub(const ZZ& a, const ZZ& b, ZZ& r);
// q = floor(a / b), r = a - q·b (r has the sign of b). q and r must be different objects.
void divMod(const ZZ& a, const ZZ& b, ZZ& q, ZZ& r);
// a to the power of the lowest limb of |e|: the sign of e is ignored, pow(2, -3) = 8.
ZZ& pow(const ZZ& a, const ZZ& e, ZZ& r);
ZZ pow(const ZZ& a, const ZZ& e);
// Integer square root, rounded down. A negative a is GMP's own failure.
ZZ sqrt(const ZZ& a);
// root = sqrt(a), rem = a - root·root.
void sqrtRem(const ZZ& a, ZZ& root, ZZ& rem);
// Non-negative greatest common divisor by Euclid's algorithm on the magnitudes; gcd(0, 0) = 0.
ZZ gcd(const ZZ& a, const ZZ& b);
bool isNonNegative(const ZZ& a);
ZZ& negate(ZZ& a);
ZZ& abs(ZZ& a);

// Decimal-digit operations; they are meant for parsing and shortening, not for inner loops.

// Number of decimal digits of |a|; 0 has one digit.
long digitCount(const ZZ& a);
// Digits of |a| once trailing zeros are removed, at least 1; *trailingZeros (when given)
// receives digitCount(a) minus that number.
long significantDigits(const ZZ& a, long* trailingZeros = nullptr);
// Divides a by 10 once per trailing decimal zero, in place; 0 stays 0.
ZZ& stripTrailingZeros(ZZ& a);
// a = floor(|a| / 10^n): the last n decimal digits are dropped and the sign is lost.
ZZ& dropLastDigits(ZZ& a, long n);
// a = a · 10^n (n zeros appended to the decimal text).
ZZ& appendZeros(ZZ& a, long n);

// Decimal text: digits with a leading "-" for negatives, no "+", no padding.
std::string toString(const ZZ& a);
// Appends the decimal text of a to out.
void appendText(std::string& out, const ZZ& a);
// Writes exactly the decimal text, nothing before or after.
std::ostream& operator<<(std::ostream& os, const ZZ& a);
// Reads one whitespace-delimited word and converts it with base 0; throws
// std::invalid_argument("mpz_set_str") when GMP rejects the word (a failed read gives the empty
// word, which is rejected too).
std::istream& operator>>(std::istream& is, ZZ& a);

}  // namespace lpconv
