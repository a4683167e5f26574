#pragma once
// Arbitrary-precision signed integers: a thin value class over one GMP integer.

#include <gmp.h>

#include <iosfwd>
#include <string>

namespace lpconv {

class BigInt {
 public:
  // Owned GMP integer; initialised by every constructor, cleared by the destructor.
  mpz_t value;

  BigInt();
  // Integers convert implicitly.
  BigInt(long v);
  BigInt(unsigned long v);
  BigInt(int v);
  // Floating values are not integers; keeping them out also keeps sqrt(2.0) and the like from
  // binding to ZZ.
  BigInt(double) = delete;
  BigInt(long double) = delete;
  // Reads the text with GMP's base-0 rules ("0x" hex, "0b" binary, leading "0" octal, else
  // decimal; an optional "-"). Throws std::invalid_argument("mpz_set_str") for text GMP rejects,
  // the empty text included.
  BigInt(const std::string& text);
  BigInt(const char* text);
  BigInt(const BigInt& other);
  // Leaves `other` holding 0; costs no allocation.
  BigInt(BigInt&& other) noexcept;
  BigInt& operator=(const BigInt& other);
  BigInt& operator=(BigInt&& other) noexcept;
  virtual ~BigInt();

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
