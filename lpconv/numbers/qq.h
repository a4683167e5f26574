#pragma once
// Exact rationals with a signed infinity, kept as canonical mixed numbers.
//
// A finite value is (isPositive ? +1 : -1) · (ganze + zaehler / nenner) with non-negative parts.
// Canonical form: zaehler < nenner, gcd(zaehler, nenner) = 1, zaehler = 0 implies nenner = 1,
// and 0 is never negative. An infinity has isInf set, ganze 1, zaehler 0, nenner 1 and its sign in
// isPositive. Every operation below returns canonical values for canonical operands; undefined
// cases (INF - INF, 0 · INF, ...) end the process through reportFailure.
//
// The rule for raw GMP calls on the public fields: before a GMP call that writes into a field it
// also reads (mpz_add(q.nenner.value, q.nenner.value, x), mpz_mul_ui(z, z, 3), mpz_mul_2exp(z,
// z, k), ...), call ensureOwnLimbs() on that field. A field holding 1 is usually the shared one
// (see zz.h), which such a call would silently turn into 0. Calls whose output is not among their
// inputs need nothing, nor does anything done through QQ's and ZZ's own operations.
//
// Threads: values are independent objects. Different QQ and ZZ values may be used in different
// threads at the same time, the work registers of the arithmetic being per thread; one value
// read from several threads at once is fine, a value written in one thread must not be touched in
// another meanwhile. shortenProducts is a process-wide setting: change it only while no other
// thread computes.

#include <cstdint>
#include <iosfwd>
#include <string>
#include <string_view>

#include <lpconv/numbers/zz.h>
#include <lpconv/util/full_precision.h>

namespace lpconv {

using dbl_t = long double;

// Whether products shorten their fraction terms to digitLimit digits. Starts false; nothing in
// the system sets it. Process-wide: set it before other threads start computing. (digitLimit
// itself, 18, lives beside setFullPrecision.)
extern bool shortenProducts;

class QQ {
 public:
  bool isInf;
  bool isPositive;
  ZZ ganze;
  ZZ zaehler;
  ZZ nenner;

  // 0.
  QQ() : isInf(false), isPositive(true) { detail::setWithoutLimbs(nenner.value, 1); }
  // The infinity constructor: +infinity for true, -infinity for false.
  explicit QQ(bool positive) : isInf(true), isPositive(positive) {
    detail::setWithoutLimbs(ganze.value, 1);
    detail::setWithoutLimbs(nenner.value, 1);
  }
  // Integers convert implicitly. The magnitude is taken in unsigned arithmetic so that LONG_MIN
  // does not overflow.
  QQ(long v) : isInf(false), isPositive(v >= 0) {
    detail::setUnsigned(
        ganze.value, v >= 0 ? static_cast<unsigned long>(v) : 0ul - static_cast<unsigned long>(v));
    detail::setWithoutLimbs(nenner.value, 1);
  }
  QQ(int v) : QQ(static_cast<long>(v)) {}
  QQ(unsigned long v) : isInf(false), isPositive(true) {
    detail::setUnsigned(ganze.value, v);
    detail::setWithoutLimbs(nenner.value, 1);
  }
  // A floating value would silently lose its fraction on the way through long: fromDbl is the
  // conversion from dbl_t. (This also keeps floor(2.5) and the like from binding to QQ.)
  QQ(double) = delete;
  QQ(long double) = delete;
  QQ(const ZZ& z);
  QQ(ZZ&& z);
  // numerator / denominator, normalised; each negative argument flips the sign. A zero
  // denominator is not checked (GMP's division by zero follows).
  QQ(const ZZ& numerator, const ZZ& denominator);
  QQ(ZZ&& numerator, ZZ&& denominator);
  QQ(long numerator, long denominator);
  // The text parser (see qq_text.cpp): reports "QQ: parse error1" and its siblings, throws
  // std::invalid_argument("mpz_set_str") for integer text GMP rejects.
  explicit QQ(const std::string& text);
  explicit QQ(const char* text);

  // Copies keep sharing the shared one; copy assignment keeps the limbs the fields own.
  QQ(const QQ& other) : isInf(other.isInf), isPositive(other.isPositive) {
    detail::initSharing(ganze.value, other.ganze.value);
    detail::initSharing(zaehler.value, other.zaehler.value);
    detail::initSharing(nenner.value, other.nenner.value);
  }
  QQ(QQ&& other) noexcept = default;
  QQ& operator=(const QQ& other) {
    isInf = other.isInf;
    isPositive = other.isPositive;
    detail::assignSharing(ganze.value, other.ganze.value);
    detail::assignSharing(zaehler.value, other.zaehler.value);
    detail::assignSharing(nenner.value, other.nenner.value);
    return *this;
  }
  QQ& operator=(QQ&& other) noexcept = default;
  ~QQ() = default;

  // Copies of shared constants built on first use.
  static QQ zero();
  static QQ one();
  static QQ two();
  static QQ half();
  static const QQ& infinity();
  static const QQ& minusInfinity();

  // Finite and equal to 0.
  bool isZero() const { return !isInf && ganze.isZero() && zaehler.isZero(); }

  QQ& operator+=(const QQ& b);
  QQ& operator-=(const QQ& b);
  QQ& operator*=(const QQ& b);
  QQ& operator/=(const QQ& b);
  // Returns the old value, then subtracts 1.
  QQ operator--(int);
};

// Two-operand operations write r and return it; r may be a or b (or both).
// add/sub report "INF - INF is not defined" for +inf - (+inf), +inf + (-inf), -inf - (-inf).
QQ& add(QQ& r, const QQ& a, const QQ& b);
QQ& sub(QQ& r, const QQ& a, const QQ& b);
// Reports "qq: INF * 0 is not defined!" / "qq: 0 * INF is not defined!".
QQ& mul(QQ& r, const QQ& a, const QQ& b);
// Reports "qq: oo / oo is not defined" and "0 / 0 is not defined"; a non-zero finite value over
// 0 is the infinity with the dividend's sign, a finite value over an infinity is 0.
QQ& div(QQ& r, const QQ& a, const QQ& b);

// Three-way comparison: negative, 0 or positive. Like ZZ's relational operators it looks at the
// low 16 bits of each integer comparison.
std::int64_t compare(const QQ& a, const QQ& b);

QQ operator-(const QQ& a);
QQ operator-(QQ&& a);
QQ operator+(const QQ& a, const QQ& b);
QQ operator-(const QQ& a, const QQ& b);
QQ operator*(const QQ& a, const QQ& b);
QQ operator/(const QQ& a, const QQ& b);
bool operator==(const QQ& a, const QQ& b);
bool operator!=(const QQ& a, const QQ& b);
bool operator<(const QQ& a, const QQ& b);
bool operator<=(const QQ& a, const QQ& b);
bool operator>(const QQ& a, const QQ& b);
bool operator>=(const QQ& a, const QQ& b);

// The integer part and the numerator with the value's sign.
ZZ signedGanze(const QQ& x);
ZZ signedZaehler(const QQ& x);

// Brings x into canonical form and returns it. Reports "A ganze / zaehler / nenner sign has been
// set, though it should not be used" when one of the three integers is negative.
QQ& normalize(QQ& x);

// Rewrites the fractions of finite a and b over their least common denominator `common`:
// a.zaehler / a.nenner = a_z / common, likewise b. Reports "QQ: The ZZs have the same address"
// when two outputs are one object, and the ZZ::INF message when a or b is infinite.
void commonDenominator(ZZ& a_z, ZZ& b_z, ZZ& common, const QQ& a, const QQ& b);

// Shortens the fraction of x to about maxDigits denominator digits by dropping trailing decimal
// digits of zaehler and nenner; with keepLeading a fraction too small to keep any digit keeps its
// leading one. Changes zaehler and nenner only and does not normalise.
QQ& limitDigits(QQ& x, long maxDigits, bool keepLeading);

// The written form: "inf", "-inf", "0", "-42", "1/2", "-3:1/2". The writer does not normalise.
std::string toString(const QQ& x);
// Appends exactly the written form to out.
void appendText(std::string& out, const QQ& x);
// The length of the written form, without writing it.
long textLength(const QQ& x);
std::ostream& operator<<(std::ostream& os, const QQ& x);
// Skips blanks, tabs, line breaks and comments, collects the characters "+,-./:" and digits
// (and a following "inf"), then parses them as the text constructor does.
std::istream& operator>>(std::istream& is, QQ& x);

namespace detail {

// x = the integer value, negated when negative (0 stays positive), as the parser leaves a plain
// integer token. A field is written only where it differs, so a reader that fills a QQ again and
// again costs no call into GMP per element; fields without limbs of their own stay without them
// for 0 and 1.
inline void setSmallInteger(QQ& x, std::uint64_t value, bool negative) {
  x.isInf = false;
  x.isPositive = !negative || value == 0;
  if (value != 0 || mpz_sgn(x.ganze.value) != 0) setUnsigned(x.ganze.value, value);
  if (mpz_sgn(x.zaehler.value) != 0) setUnsigned(x.zaehler.value, 0);
  if (!isOne(x.nenner.value)) setUnsigned(x.nenner.value, 1);
}

// The plain integer token: an optional sign and 1 to 18 decimal digits without a leading zero
// (or the single digit 0). Sets r as the general parser would and returns true; any other text
// returns false and leaves r alone.
bool parsePlainInteger(std::string_view text, QQ& r);

}  // namespace detail

// Rounding to integers; an infinity is returned unchanged.
QQ floor(const QQ& x);
QQ ceil(const QQ& x);
// Nearest integer, halves away from zero.
QQ round(const QQ& x);
// a - round(a / b) · b.
QQ remainder(const QQ& a, const QQ& b);
// The n-th root, exact when x is an exact power, else approximated to digitLimit digits.
// Reports "QQ: zero-th roots are not defined", "QQ: complex roots are not implemented" (even
// root of a negative value) and "QQ: division by zero" (negative root of 0).
QQ root(const QQ& x, const ZZ& n);
// x to the power e; exact for integral e.
QQ power(const QQ& x, const QQ& e);
// Logarithms, approximated to about digitLimit digits. log2 reports "log2(-inf) is not
// implemented / defined" and "log2(x), x <= 0 is not implemented / defined"; log reports
// "log(-inf) is not implemented / defined" and log2's message for a finite x <= 0.
QQ log2(const QQ& x);
QQ log(const QQ& x);

// Exactly the value of the text that `value` writes to a stream set up by setFullPrecision
// (at most 17 significant digits): 0.1L from double 0.1 gives
// 10000000000000001/100000000000000000. A NaN writes "nan", which throws
// std::invalid_argument("mpz_set_str") like the parser does.
QQ fromDbl(dbl_t value);
// The nearest dbl_t. With `exact`, throws PreCommaPrecisionException when the integer part has
// more than digitLimit decimal digits, and PostCommaPrecisionException when the value needs
// more than digitLimit significant decimal digits, unless `allowCut`, which converts the value
// cut after digitLimit significant digits instead. An infinity converts without any check.
dbl_t toDbl(const QQ& x, bool exact = false, bool allowCut = false);

}  // namespace lpconv
