#include <lpconv/numbers/zz.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <istream>
#include <ostream>
#include <stdexcept>
#include <utility>

namespace lpconv {

void detail::giveOwnLimbs(mpz_ptr z) {
  mpz_t own;
  mpz_init_set(own, z);
  *z = *own;
}

namespace {

[[noreturn]] void throwBadText() { throw std::invalid_argument("mpz_set_str"); }

void setFromText(mpz_t target, const char* text) {
  // A rejected text must leave the target untouched, so it is read into a temporary first.
  mpz_t tmp;
  if (mpz_init_set_str(tmp, text, 0) != 0) {
    mpz_clear(tmp);
    throwBadText();
  }
  mpz_swap(target, tmp);
  mpz_clear(tmp);
}

const ZZ& ten() {
  static const ZZ kTen(10ul);
  return kTen;
}

std::int16_t narrowed(int c) { return static_cast<std::int16_t>(c); }

// Decimal digits of |a| (no sign).
std::string magnitudeText(const ZZ& a) {
  std::string text;
  appendText(text, a);
  if (!text.empty() && text[0] == '-') text.erase(0, 1);
  return text;
}

int decimalDigitsOf(unsigned long v) {
  int n = 1;
  while (v >= 10) {
    v /= 10;
    ++n;
  }
  return n;
}

}  // namespace

BigInt::BigInt(const std::string& text) : BigInt(text.c_str()) {}

BigInt::BigInt(const char* text) {
  mpz_init(value);
  try {
    setFromText(value, text);
  } catch (...) {
    mpz_clear(value);
    throw;
  }
}

BigInt BigInt::zero() {
  static const BigInt kZero;
  return kZero;
}

BigInt BigInt::one() {
  static const BigInt kOne(1ul);
  return kOne;
}

BigInt& BigInt::operator+=(const BigInt& b) {
  ensureOwnLimbs();
  mpz_add(value, value, b.value);
  return *this;
}

BigInt& BigInt::operator-=(const BigInt& b) {
  ensureOwnLimbs();
  mpz_sub(value, value, b.value);
  return *this;
}

BigInt& BigInt::operator*=(const BigInt& b) {
  ensureOwnLimbs();
  mpz_mul(value, value, b.value);
  return *this;
}

BigInt& BigInt::operator/=(const BigInt& b) {
  ensureOwnLimbs();
  mpz_fdiv_q(value, value, b.value);
  return *this;
}

BigInt& BigInt::operator%=(const BigInt& b) {
  ensureOwnLimbs();
  mpz_mod(value, value, b.value);
  return *this;
}

BigInt& BigInt::operator++() {
  ensureOwnLimbs();
  mpz_add_ui(value, value, 1);
  return *this;
}

BigInt BigInt::operator++(int) {
  BigInt old(*this);
  ++*this;
  return old;
}

int cmp(const ZZ& a, const ZZ& b) { return mpz_cmp(a.value, b.value); }

bool operator==(const ZZ& a, const ZZ& b) { return narrowed(cmp(a, b)) == 0; }
bool operator!=(const ZZ& a, const ZZ& b) { return narrowed(cmp(a, b)) != 0; }
bool operator<(const ZZ& a, const ZZ& b) { return narrowed(cmp(a, b)) < 0; }
bool operator>(const ZZ& a, const ZZ& b) { return narrowed(cmp(b, a)) < 0; }
bool operator<=(const ZZ& a, const ZZ& b) { return narrowed(cmp(b, a)) >= 0; }
bool operator>=(const ZZ& a, const ZZ& b) { return narrowed(cmp(a, b)) >= 0; }

ZZ operator+(const ZZ& a, const ZZ& b) {
  ZZ r;
  mpz_add(r.value, a.value, b.value);
  return r;
}

ZZ operator-(const ZZ& a, const ZZ& b) {
  ZZ r;
  mpz_sub(r.value, a.value, b.value);
  return r;
}

ZZ operator*(const ZZ& a, const ZZ& b) {
  ZZ r;
  mpz_mul(r.value, a.value, b.value);
  return r;
}

ZZ operator/(const ZZ& a, const ZZ& b) {
  ZZ r;
  mpz_fdiv_q(r.value, a.value, b.value);
  return r;
}

ZZ operator%(const ZZ& a, const ZZ& b) {
  ZZ r;
  mpz_mod(r.value, a.value, b.value);
  return r;
}

ZZ operator-(const ZZ& a) {
  ZZ r(a);
  mpz_neg(r.value, r.value);
  return r;
}

ZZ operator-(ZZ&& a) {
  ZZ r(std::move(a));
  mpz_neg(r.value, r.value);
  return r;
}

namespace {

// The operations below write r in place when it is an operand.
void prepareInPlace(ZZ& r, const ZZ& a, const ZZ& b) {
  if (&r == &a || &r == &b) r.ensureOwnLimbs();
}

}  // namespace

ZZ& add(const ZZ& a, const ZZ& b, ZZ& r) {
  prepareInPlace(r, a, b);
  mpz_add(r.value, a.value, b.value);
  return r;
}

ZZ& sub(const ZZ& a, const ZZ& b, ZZ& r) {
  prepareInPlace(r, a, b);
  mpz_sub(r.value, a.value, b.value);
  return r;
}

void divMod(const ZZ& a, const ZZ& b, ZZ& q, ZZ& r) {
  // Built in temporaries so that q or r may be a or b.
  ZZ quotient;
  ZZ rest;
  mpz_fdiv_qr(quotient.value, rest.value, a.value, b.value);
  mpz_swap(q.value, quotient.value);
  mpz_swap(r.value, rest.value);
}

ZZ& pow(const ZZ& a, const ZZ& e, ZZ& r) {
  const unsigned long exponent = mpz_size(e.value) == 0 ? 0ul : mpz_getlimbn(e.value, 0);
  prepareInPlace(r, a, e);
  mpz_pow_ui(r.value, a.value, exponent);
  return r;
}

ZZ pow(const ZZ& a, const ZZ& e) {
  ZZ r;
  pow(a, e, r);
  return r;
}

ZZ sqrt(const ZZ& a) {
  ZZ r;
  mpz_sqrt(r.value, a.value);
  return r;
}

void sqrtRem(const ZZ& a, ZZ& root, ZZ& rem) {
  ZZ s;
  mpz_sqrt(s.value, a.value);
  ZZ square;
  mpz_mul(square.value, s.value, s.value);
  if (&rem == &a) rem.ensureOwnLimbs();
  mpz_sub(rem.value, a.value, square.value);
  mpz_swap(root.value, s.value);
}

ZZ gcd(const ZZ& a, const ZZ& b) {
  ZZ x(a);
  ZZ y(b);
  abs(x);
  abs(y);
  ZZ q;
  ZZ r;
  while (mpz_sgn(y.value) != 0) {
    mpz_fdiv_q(q.value, x.value, y.value);
    mpz_mul(r.value, q.value, y.value);
    mpz_sub(r.value, x.value, r.value);
    mpz_swap(x.value, y.value);
    mpz_swap(y.value, r.value);
  }
  return x;
}

bool isNonNegative(const ZZ& a) { return mpz_sgn(a.value) >= 0; }

ZZ& negate(ZZ& a) {
  mpz_neg(a.value, a.value);
  return a;
}

ZZ& abs(ZZ& a) {
  mpz_abs(a.value, a.value);
  return a;
}

long digitCount(const ZZ& a) {
  if (mpz_size(a.value) <= 1) return decimalDigitsOf(mpz_getlimbn(a.value, 0));
  return static_cast<long>(magnitudeText(a).size());
}

long significantDigits(const ZZ& a, long* trailingZeros) {
  const std::string text = magnitudeText(a);
  const std::size_t lastNonZero = text.find_last_not_of('0');
  const long digits = static_cast<long>(text.size());
  const long significant =
      lastNonZero == std::string::npos ? 1 : static_cast<long>(lastNonZero) + 1;
  if (trailingZeros != nullptr) *trailingZeros = digits - significant;
  return significant;
}

ZZ& stripTrailingZeros(ZZ& a) {
  if (mpz_sgn(a.value) == 0) return a;
  a.ensureOwnLimbs();
  mpz_remove(a.value, a.value, ten().value);
  return a;
}

ZZ& dropLastDigits(ZZ& a, long n) {
  if (mpz_sgn(a.value) == 0) return a;
  mpz_abs(a.value, a.value);
  if (n <= 0) return a;
  ZZ scale;
  mpz_ui_pow_ui(scale.value, 10, static_cast<unsigned long>(n));
  a.ensureOwnLimbs();
  mpz_tdiv_q(a.value, a.value, scale.value);
  return a;
}

ZZ& appendZeros(ZZ& a, long n) {
  if (n <= 0) return a;
  ZZ scale;
  mpz_ui_pow_ui(scale.value, 10, static_cast<unsigned long>(n));
  a.ensureOwnLimbs();
  mpz_mul(a.value, a.value, scale.value);
  return a;
}

std::string toString(const ZZ& a) {
  std::string text;
  appendText(text, a);
  return text;
}

void appendText(std::string& out, const ZZ& a) {
  if (mpz_size(a.value) <= 1) {
    // One limb: std::to_chars is much cheaper than GMP's general conversion.
    char buffer[24];
    char* p = buffer;
    if (mpz_sgn(a.value) < 0) *p++ = '-';
    p = std::to_chars(p, buffer + sizeof buffer, mpz_getlimbn(a.value, 0)).ptr;
    out.append(buffer, p);
    return;
  }
  const std::size_t start = out.size();
  // Room for the sign and GMP's terminating NUL; sizeinbase may overestimate by one digit.
  out.resize(start + mpz_sizeinbase(a.value, 10) + 2);
  mpz_get_str(out.data() + start, 10, a.value);
  out.resize(start + std::strlen(out.data() + start));
}

std::ostream& operator<<(std::ostream& os, const ZZ& a) {
  const std::string text = toString(a);
  return os.write(text.data(), static_cast<std::streamsize>(text.size()));
}

std::istream& operator>>(std::istream& is, ZZ& a) {
  std::string word;
  is >> word;
  setFromText(a.value, word.c_str());
  return is;
}

}  // namespace lpconv
