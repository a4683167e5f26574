#include <lpconv/numbers/qq.h>

#include <cstdint>
#include <numeric>
#include <utility>

#include <lpconv/numbers/internal/wide_int.h>
#include <lpconv/numbers/messages.h>
#include <lpconv/util/failure.h>

namespace lpconv {

bool shortenProducts = false;

namespace {

// Work registers of the arithmetic, one set per thread: no operation holds a register across a
// call to another operation that uses them, so one set serves a thread, and their storage is
// recycled by swapping results into place instead of allocating per operation. Nothing here is
// shared between threads, so values in different threads are independent.
struct Registers {
  mpz_t g, z, n, d, t, u;
  Registers() { mpz_inits(g, z, n, d, t, u, nullptr); }
  ~Registers() { mpz_clears(g, z, n, d, t, u, nullptr); }
  Registers(const Registers&) = delete;
  Registers& operator=(const Registers&) = delete;
};

Registers& registers() {
  thread_local Registers r;
  return r;
}

bool isOne(const ZZ& z) { return detail::isOne(z.value); }

void setZero(QQ& r) {
  r.isInf = false;
  r.isPositive = true;
  detail::setUnsigned(r.ganze.value, 0);
  detail::setUnsigned(r.zaehler.value, 0);
  detail::setUnsigned(r.nenner.value, 1);
}

void setInfinity(QQ& r, bool positive) {
  r.isInf = true;
  r.isPositive = positive;
  detail::setUnsigned(r.ganze.value, 1);
  detail::setUnsigned(r.zaehler.value, 0);
  detail::setUnsigned(r.nenner.value, 1);
}

// Swaps a result register into a field. The field's old value lands in the register; one without
// limbs of its own is dropped there, so that no register enters an operation sharing the limb of
// 1 and every register may be written in place.
void takeRegister(ZZ& field, mpz_ptr reg) {
  mpz_swap(field.value, reg);
  if (reg->_mp_alloc == 0) detail::setWithoutLimbs(reg, 0);
}

// Moves the registers g, z, n into r as a finite value with the given sign; 0 is made positive.
void takeRegisters(QQ& r, Registers& s, bool positive) {
  r.isInf = false;
  takeRegister(r.ganze, s.g);
  takeRegister(r.zaehler, s.z);
  takeRegister(r.nenner, s.n);
  r.isPositive = positive || (mpz_sgn(r.ganze.value) == 0 && mpz_sgn(r.zaehler.value) == 0);
}

// Sets s.z / s.n to a.zaehler / a.nenner ± b.zaehler / b.nenner over the least common
// denominator. Returns whether the sum may share a factor with the denominator; if so, the only
// candidates divide s.d (the gcd of the two denominators), since both inputs are reduced.
bool combineFractions(Registers& s, const QQ& a, const QQ& b, bool subtract) {
  const auto combine = subtract ? mpz_sub : mpz_add;
  if (mpz_cmp(a.nenner.value, b.nenner.value) == 0) {
    combine(s.z, a.zaehler.value, b.zaehler.value);
    mpz_set(s.n, a.nenner.value);
    mpz_set(s.d, a.nenner.value);
    return !isOne(b.nenner);
  }
  if (isOne(b.nenner)) {
    mpz_set(s.z, a.zaehler.value);
    mpz_set(s.n, a.nenner.value);
    return false;
  }
  if (isOne(a.nenner)) {
    if (subtract) {
      mpz_neg(s.z, b.zaehler.value);
    } else {
      mpz_set(s.z, b.zaehler.value);
    }
    mpz_set(s.n, b.nenner.value);
    return false;
  }
  mpz_gcd(s.d, a.nenner.value, b.nenner.value);
  if (mpz_cmp_ui(s.d, 1) == 0) {
    mpz_mul(s.z, a.zaehler.value, b.nenner.value);
    mpz_mul(s.t, b.zaehler.value, a.nenner.value);
    combine(s.z, s.z, s.t);
    mpz_mul(s.n, a.nenner.value, b.nenner.value);
    return false;
  }
  mpz_divexact(s.t, b.nenner.value, s.d);
  mpz_mul(s.z, a.zaehler.value, s.t);
  mpz_mul(s.n, a.nenner.value, s.t);
  mpz_divexact(s.u, a.nenner.value, s.d);
  mpz_mul(s.t, b.zaehler.value, s.u);
  combine(s.z, s.z, s.t);
  return true;
}

// Cancels the common factor of s.z and s.n, which divides s.d when mayShare is set.
void reduceFraction(Registers& s, bool mayShare) {
  if (mpz_sgn(s.z) == 0) {
    detail::setUnsigned(s.n, 1);
    return;
  }
  if (!mayShare) return;
  mpz_gcd(s.t, s.z, s.d);
  if (mpz_cmp_ui(s.t, 1) != 0) {
    mpz_divexact(s.z, s.z, s.t);
    mpz_divexact(s.n, s.n, s.t);
  }
}

// r = |a| + |b| with the given sign, for finite canonical a and b.
void addMagnitudes(QQ& r, const QQ& a, const QQ& b, bool positive) {
  Registers& s = registers();
  if (isOne(a.nenner) && isOne(b.nenner)) {
    mpz_add(s.g, a.ganze.value, b.ganze.value);
    detail::setUnsigned(s.z, 0);
    detail::setUnsigned(s.n, 1);
    takeRegisters(r, s, positive);
    return;
  }
  const bool mayShare = combineFractions(s, a, b, false);
  mpz_add(s.g, a.ganze.value, b.ganze.value);
  if (mpz_cmp(s.z, s.n) >= 0) {
    mpz_sub(s.z, s.z, s.n);
    mpz_add_ui(s.g, s.g, 1);
  }
  reduceFraction(s, mayShare);
  takeRegisters(r, s, positive);
}

// r = |a| - |b|, negated when `negated`, for finite canonical a and b.
void subMagnitudes(QQ& r, const QQ& a, const QQ& b, bool negated) {
  Registers& s = registers();
  if (isOne(a.nenner) && isOne(b.nenner)) {
    mpz_sub(s.g, a.ganze.value, b.ganze.value);
    const bool nonNegative = mpz_sgn(s.g) >= 0;
    mpz_abs(s.g, s.g);
    detail::setUnsigned(s.z, 0);
    detail::setUnsigned(s.n, 1);
    takeRegisters(r, s, nonNegative != negated);
    return;
  }
  const bool mayShare = combineFractions(s, a, b, true);
  mpz_sub(s.g, a.ganze.value, b.ganze.value);
  if (mpz_sgn(s.z) < 0) {
    mpz_add(s.z, s.z, s.n);
    mpz_sub_ui(s.g, s.g, 1);
  }
  // Now the difference is g + z/n with 0 <= z < n; a negative g turns into a magnitude.
  bool nonNegative = true;
  if (mpz_sgn(s.g) < 0) {
    nonNegative = false;
    mpz_neg(s.g, s.g);
    if (mpz_sgn(s.z) != 0) {
      mpz_sub_ui(s.g, s.g, 1);
      mpz_sub(s.z, s.n, s.z);
    }
  }
  reduceFraction(s, mayShare);
  takeRegisters(r, s, nonNegative != negated);
}

// r = ±|a| ± |b| (signs aPositive, bPositive) in native arithmetic, for finite canonical a and b
// whose six integers are all below 2^62. Returns false, touching nothing, when one is larger.
bool addSmall(QQ& r, const QQ& a, bool aPositive, const QQ& b, bool bPositive) {
  using detail::i128;
  using detail::u128;
  std::uint64_t ga, za, na, gb, zb, nb;
  if (!detail::smallPart(a.nenner, na) || !detail::smallPart(b.nenner, nb) ||
      !detail::smallPart(a.ganze, ga) || !detail::smallPart(a.zaehler, za) ||
      !detail::smallPart(b.ganze, gb) || !detail::smallPart(b.zaehler, zb)) {
    return false;
  }
  // Over the least common denominator na · (nb / d); only factors of d can remain in common.
  // Decimal denominators often divide one another; that test is far cheaper than a gcd.
  const std::uint64_t d = nb % na == 0 ? na : na % nb == 0 ? nb : std::gcd(na, nb);
  const std::uint64_t aScale = nb / d;
  const std::uint64_t bScale = na / d;
  u128 n = static_cast<u128>(na) * aScale;
  const auto termA = static_cast<i128>(static_cast<u128>(za) * aScale);
  const auto termB = static_cast<i128>(static_cast<u128>(zb) * bScale);
  i128 z = (aPositive ? termA : -termA) + (bPositive ? termB : -termB);
  i128 g = (aPositive ? static_cast<i128>(ga) : -static_cast<i128>(ga)) +
           (bPositive ? static_cast<i128>(gb) : -static_cast<i128>(gb));
  // |z| < 2n: at most two steps bring the fraction into [0, n).
  while (z < 0) {
    z += static_cast<i128>(n);
    --g;
  }
  while (z >= static_cast<i128>(n)) {
    z -= static_cast<i128>(n);
    ++g;
  }
  bool positive = true;
  if (g < 0) {
    positive = false;
    if (z == 0) {
      g = -g;
    } else {
      g = -g - 1;
      z = static_cast<i128>(n) - z;
    }
  }
  auto fraction = static_cast<u128>(z);
  if (fraction == 0) {
    n = 1;
  } else if (d != 1) {
    const std::uint64_t rest = (fraction >> 64) == 0 ? static_cast<std::uint64_t>(fraction) % d
                                                     : static_cast<std::uint64_t>(fraction % d);
    const std::uint64_t common = std::gcd(rest, d);
    if (common != 1) {
      fraction /= common;
      n /= common;
    }
  }
  r.isInf = false;
  r.isPositive = positive || (g == 0 && fraction == 0);
  detail::setWide(r.ganze.value, static_cast<u128>(g));
  detail::setWide(r.zaehler.value, fraction);
  detail::setWide(r.nenner.value, n);
  return true;
}

// a + b where b carries the sign bPositive (so subtraction is a + (-b)); r may alias a or b.
void addSigned(QQ& r, const QQ& a, const QQ& b, bool bPositive) {
  if (a.isInf || b.isInf) {
    if (a.isInf && b.isInf) {
      if (a.isPositive != bPositive) reportFailure(messages::kInfMinusInf);
      setInfinity(r, a.isPositive);
    } else if (a.isInf) {
      setInfinity(r, a.isPositive);
    } else {
      setInfinity(r, bPositive);
    }
    return;
  }
  // Adding 0 is common in the converter's rows (a side without a constant, absent terms).
  if (b.isZero()) {
    if (&r != &a) r = a;
    return;
  }
  if (a.isZero()) {
    if (&r != &b) r = b;
    r.isPositive = bPositive;
    return;
  }
  if (addSmall(r, a, a.isPositive, b, bPositive)) return;
  if (a.isPositive == bPositive) {
    addMagnitudes(r, a, b, a.isPositive);
  } else {
    subMagnitudes(r, a, b, !a.isPositive);
  }
}

// s.t = ganze · nenner + zaehler, the numerator of |x| as an improper fraction.
void improperNumerator(mpz_ptr target, const QQ& x) {
  mpz_mul(target, x.ganze.value, x.nenner.value);
  mpz_add(target, target, x.zaehler.value);
}

// Sets s.g, s.z, s.n to the mixed form of num / den (positive, coprime).
void splitImproper(Registers& s, mpz_srcptr num, mpz_srcptr den) {
  if (mpz_cmp_ui(den, 1) == 0) {
    mpz_set(s.g, num);
    detail::setUnsigned(s.z, 0);
    detail::setUnsigned(s.n, 1);
    return;
  }
  mpz_fdiv_qr(s.g, s.z, num, den);
  mpz_set(s.n, den);
}

// Divides x and y by their gcd, kept in `common`. A gcd other than 1 leaves neither x nor y at
// 1, so both own the limbs they are divided in.
void cancel(mpz_ptr x, mpz_ptr y, mpz_ptr common) {
  mpz_gcd(common, x, y);
  if (mpz_cmp_ui(common, 1) != 0) {
    mpz_divexact(x, x, common);
    mpz_divexact(y, y, common);
  }
}

// The numerator ganze · nenner + zaehler of |x| as an improper fraction, and the denominator,
// when both fit in one word.
bool smallImproper(const QQ& x, std::uint64_t& numerator, std::uint64_t& denominator) {
  std::uint64_t g, z;
  if (!detail::smallPart(x.ganze, g) || !detail::smallPart(x.zaehler, z) ||
      !detail::smallPart(x.nenner, denominator)) {
    return false;
  }
  const detail::u128 n = static_cast<detail::u128>(g) * denominator + z;
  if ((n >> 64) != 0) return false;
  numerator = static_cast<std::uint64_t>(n);
  return true;
}

// r = (p / q) with the given sign, for coprime p and q > 0.
void setQuotient(QQ& r, detail::u128 p, detail::u128 q, bool positive) {
  r.isInf = false;
  r.isPositive = positive;
  if (q == 1) {
    detail::setWide(r.ganze.value, p);
    detail::setUnsigned(r.zaehler.value, 0);
    detail::setUnsigned(r.nenner.value, 1);
    return;
  }
  detail::setWide(r.ganze.value, p / q);
  detail::setWide(r.zaehler.value, p % q);
  detail::setWide(r.nenner.value, q);
}

// |a| · |b| (or |a| / |b| when `divide`) in native arithmetic for finite, non-zero, canonical
// operands whose improper fractions fit in one word each. Returns false, touching nothing,
// otherwise.
bool mulSmall(QQ& r, const QQ& a, const QQ& b, bool divide, bool positive) {
  std::uint64_t pa, qa, pb, qb;
  if (!smallImproper(a, pa, qa) || !smallImproper(b, pb, qb)) return false;
  if (divide) std::swap(pb, qb);
  // Each fraction is reduced, so cancelling crosswise leaves the product reduced.
  const std::uint64_t g1 = std::gcd(pa, qb);
  const std::uint64_t g2 = std::gcd(pb, qa);
  setQuotient(r, static_cast<detail::u128>(pa / g1) * (pb / g2),
              static_cast<detail::u128>(qa / g2) * (qb / g1), positive);
  return true;
}

// |a| · |b| for finite, non-zero, canonical operands: the improper fractions cross-cancelled.
void mulMagnitudes(QQ& r, const QQ& a, const QQ& b, bool positive) {
  if (mulSmall(r, a, b, false, positive)) return;
  Registers& s = registers();
  if (isOne(a.nenner) && isOne(b.nenner)) {
    mpz_mul(s.g, a.ganze.value, b.ganze.value);
    detail::setUnsigned(s.z, 0);
    detail::setUnsigned(s.n, 1);
    takeRegisters(r, s, positive);
    return;
  }
  // (t / na) · (u / nb): each numerator is coprime to its own denominator, so cancelling
  // crosswise leaves the product reduced.
  improperNumerator(s.t, a);
  improperNumerator(s.u, b);
  mpz_set(s.z, a.nenner.value);
  mpz_set(s.n, b.nenner.value);
  if (!isOne(b.nenner)) cancel(s.t, s.n, s.d);
  if (!isOne(a.nenner)) cancel(s.u, s.z, s.d);
  mpz_mul(s.t, s.t, s.u);
  mpz_mul(s.u, s.z, s.n);
  splitImproper(s, s.t, s.u);
  takeRegisters(r, s, positive);
}

// |a| / |b| for finite, non-zero, canonical operands.
void divMagnitudes(QQ& r, const QQ& a, const QQ& b, bool positive) {
  if (mulSmall(r, a, b, true, positive)) return;
  Registers& s = registers();
  // (ta / na) / (tb / nb) = (ta · nb) / (na · tb), cancelled crosswise.
  improperNumerator(s.t, a);
  improperNumerator(s.u, b);
  mpz_set(s.z, a.nenner.value);
  mpz_set(s.n, b.nenner.value);
  cancel(s.t, s.u, s.d);
  if (!isOne(a.nenner) && !isOne(b.nenner)) cancel(s.z, s.n, s.d);
  mpz_mul(s.t, s.t, s.n);
  mpz_mul(s.u, s.z, s.u);
  splitImproper(s, s.t, s.u);
  takeRegisters(r, s, positive);
}

// The field-by-field definitions of the operations. They give the same canonical results as the
// fast paths above for canonical operands; they serve the two cases the fast paths do not: the
// shortened products, and operands whose integer part carries a sign of its own (the parser keeps
// a doubly signed integer such as "--5" as read), which these definitions treat as signed parts.

bool hasSignedField(const QQ& x) {
  return x.ganze.sign() < 0 || x.zaehler.sign() < 0 || x.nenner.sign() < 0;
}

QQ& subByFields(QQ& r, const QQ& a, const QQ& b);

QQ& addByFields(QQ& r, const QQ& aIn, const QQ& bIn) {
  const QQ a(aIn);
  const QQ b(bIn);
  if (a.isPositive && !b.isPositive) return subByFields(r, a, -b);
  if (!a.isPositive) return subByFields(r, b, -a);
  if (a.isInf || b.isInf) {
    setInfinity(r, true);
    return r;
  }
  ZZ az;
  ZZ bz;
  ZZ common;
  commonDenominator(az, bz, common, a, b);
  r.isInf = false;
  r.isPositive = true;
  r.zaehler = az + bz;
  r.ganze = a.ganze + b.ganze;
  r.nenner = std::move(common);
  return normalize(r);
}

QQ& subByFields(QQ& r, const QQ& aIn, const QQ& bIn) {
  const QQ a(aIn);
  const QQ b(bIn);
  if (a.isPositive && !b.isPositive) return addByFields(r, a, -b);
  if (!a.isPositive) {
    addByFields(r, -a, b);
    if (!r.isZero()) r.isPositive = !r.isPositive;
    return r;
  }
  if (a.isInf) {
    if (b.isInf) reportFailure(messages::kInfMinusInf);
    setInfinity(r, true);
    return r;
  }
  if (b.isInf) {
    setInfinity(r, false);
    return r;
  }
  ZZ az;
  ZZ bz;
  ZZ common;
  commonDenominator(az, bz, common, a, b);
  ZZ z = az - bz;
  ZZ g = a.ganze - b.ganze;
  r.isInf = false;
  if ((g.sign() >= 0) == (z.sign() >= 0)) {
    r.isPositive = g.sign() >= 0;
    abs(g);
    abs(z);
  } else {
    // One part negative, the other not: fold the integer part into the fraction.
    z += g * common;
    g = ZZ(0L);
    r.isPositive = z.sign() >= 0;
    abs(z);
  }
  r.ganze = std::move(g);
  r.zaehler = std::move(z);
  r.nenner = std::move(common);
  return normalize(r);
}

// The product as the sum of the four terms of the signed mixed parts; with shortenProducts on,
// the three fraction terms are first shortened to digitLimit digits, which changes the value.
void mulByTerms(QQ& r, const QQ& a, const QQ& b) {
  const ZZ ga = signedGanze(a);
  const ZZ za = signedZaehler(a);
  const ZZ gb = signedGanze(b);
  const ZZ zb = signedZaehler(b);
  const QQ t1(ga * gb);
  QQ t2(ga * zb, b.nenner);
  QQ t3(gb * za, a.nenner);
  QQ t4(za * zb, a.nenner * b.nenner);
  if (shortenProducts) {
    for (QQ* t : {&t4, &t3, &t2}) {
      limitDigits(*t, digitLimit, true);
      normalize(*t);
    }
  }
  QQ sum = t1 + t2;
  sum += t3;
  sum += t4;
  r = std::move(sum);
  normalize(r);
}

// a / b as QQ(ga · nb, B) + QQ(za · nb, na · B) with B = gb · nb + zb, all parts signed.
void divByTerms(QQ& r, const QQ& a, const QQ& b) {
  const ZZ ga = signedGanze(a);
  const ZZ za = signedZaehler(a);
  const ZZ gb = signedGanze(b);
  const ZZ zb = signedZaehler(b);
  const ZZ bigB = gb * b.nenner + zb;
  QQ sum = QQ(ga * b.nenner, bigB) + QQ(za * b.nenner, a.nenner * bigB);
  r = std::move(sum);
  normalize(r);
}

}  // namespace

QQ::QQ(const ZZ& z) : isInf(false), isPositive(z.sign() >= 0), ganze(z) {
  abs(ganze);
  detail::setWithoutLimbs(nenner.value, 1);
}

QQ::QQ(ZZ&& z) : isInf(false), isPositive(z.sign() >= 0), ganze(std::move(z)) {
  abs(ganze);
  detail::setWithoutLimbs(nenner.value, 1);
}

QQ::QQ(const ZZ& numerator, const ZZ& denominator) : QQ(ZZ(numerator), ZZ(denominator)) {}

QQ::QQ(ZZ&& numerator, ZZ&& denominator)
    : isInf(false),
      isPositive(true),
      ganze(),
      zaehler(std::move(numerator)),
      nenner(std::move(denominator)) {
  if (zaehler.sign() < 0) {
    isPositive = !isPositive;
    abs(zaehler);
  }
  if (nenner.sign() < 0) {
    isPositive = !isPositive;
    abs(nenner);
  }
  normalize(*this);
}

QQ::QQ(long numerator, long denominator) : QQ(ZZ(numerator), ZZ(denominator)) {}

QQ QQ::zero() {
  static const QQ kZero;
  return kZero;
}

QQ QQ::one() {
  static const QQ kOne(1L);
  return kOne;
}

QQ QQ::two() {
  static const QQ kTwo(2L);
  return kTwo;
}

QQ QQ::half() {
  static const QQ kHalf = one() / two();
  return kHalf;
}

const QQ& QQ::infinity() {
  static const QQ kInfinity(true);
  return kInfinity;
}

const QQ& QQ::minusInfinity() {
  static const QQ kMinusInfinity(false);
  return kMinusInfinity;
}

QQ& QQ::operator+=(const QQ& b) { return add(*this, *this, b); }
QQ& QQ::operator-=(const QQ& b) { return sub(*this, *this, b); }
QQ& QQ::operator*=(const QQ& b) { return mul(*this, *this, b); }
QQ& QQ::operator/=(const QQ& b) { return div(*this, *this, b); }

QQ QQ::operator--(int) {
  static const QQ kOne(1L);
  QQ old(*this);
  sub(*this, *this, kOne);
  return old;
}

QQ& add(QQ& r, const QQ& a, const QQ& b) {
  if (hasSignedField(a) || hasSignedField(b)) return addByFields(r, a, b);
  addSigned(r, a, b, b.isPositive);
  return r;
}

QQ& sub(QQ& r, const QQ& a, const QQ& b) {
  if (hasSignedField(a) || hasSignedField(b)) return subByFields(r, a, b);
  addSigned(r, a, b, !b.isPositive);
  return r;
}

QQ& mul(QQ& r, const QQ& a, const QQ& b) {
  if (a.isInf) {
    if (b.isZero()) reportFailure(messages::kInfTimesZero);
    setInfinity(r, a.isPositive == b.isPositive);
    return r;
  }
  if (b.isInf) {
    if (a.isZero()) reportFailure(messages::kZeroTimesInf);
    setInfinity(r, a.isPositive == b.isPositive);
    return r;
  }
  if (a.isZero() || b.isZero()) {
    setZero(r);
    return r;
  }
  if (shortenProducts || hasSignedField(a) || hasSignedField(b)) {
    mulByTerms(r, a, b);
  } else {
    mulMagnitudes(r, a, b, a.isPositive == b.isPositive);
  }
  return r;
}

QQ& div(QQ& r, const QQ& a, const QQ& b) {
  if (a.isInf) {
    if (b.isInf) reportFailure(messages::kInfOverInf);
    setInfinity(r, a.isPositive == b.isPositive);
    return r;
  }
  if (b.isInf) {
    setZero(r);
    return r;
  }
  if (b.isZero()) {
    if (a.isZero()) reportFailure(messages::kZeroOverZero);
    setInfinity(r, a.isPositive);
    return r;
  }
  if (a.isZero()) {
    setZero(r);
    return r;
  }
  if (hasSignedField(a) || hasSignedField(b)) {
    divByTerms(r, a, b);
  } else {
    divMagnitudes(r, a, b, a.isPositive == b.isPositive);
  }
  return r;
}

std::int64_t compare(const QQ& a, const QQ& b) {
  if (&a == &b) return 0;
  if (a.isPositive != b.isPositive) return a.isPositive ? 1 : -1;
  if (a.isInf || b.isInf) {
    if (a.isInf && b.isInf) return 0;
    if (b.isInf) return a.isPositive ? -1 : 1;
    return a.isPositive ? 1 : -1;
  }
  std::int16_t c = static_cast<std::int16_t>(cmp(a.ganze, b.ganze));
  if (c == 0) {
    // The numerators over the least common denominator, as commonDenominator forms them; equal
    // denominators are the common denominator themselves.
    std::uint64_t za, na, zb, nb;
    if (a.zaehler.isZero() && b.zaehler.isZero()) {
      c = 0;  // equal integers, the common case in coefficient rows
    } else if (mpz_cmp(a.nenner.value, b.nenner.value) == 0) {
      c = static_cast<std::int16_t>(mpz_cmp(a.zaehler.value, b.zaehler.value));
    } else if (detail::smallPart(a.zaehler, za) && detail::smallPart(a.nenner, na) &&
               detail::smallPart(b.zaehler, zb) && detail::smallPart(b.nenner, nb)) {
      // One-word fractions: the cross products order them like the numerators over the least
      // common denominator.
      const detail::u128 left = static_cast<detail::u128>(za) * nb;
      const detail::u128 right = static_cast<detail::u128>(zb) * na;
      c = static_cast<std::int16_t>((left > right) - (left < right));
    } else {
      Registers& s = registers();
      mpz_gcd(s.d, a.nenner.value, b.nenner.value);
      mpz_divexact(s.t, b.nenner.value, s.d);
      mpz_mul(s.t, s.t, a.zaehler.value);
      mpz_divexact(s.u, a.nenner.value, s.d);
      mpz_mul(s.u, s.u, b.zaehler.value);
      c = static_cast<std::int16_t>(mpz_cmp(s.t, s.u));
    }
  }
  return a.isPositive ? c : -static_cast<std::int64_t>(c);
}

QQ operator-(const QQ& a) {
  QQ r(a);
  if (!r.isZero()) r.isPositive = !r.isPositive;
  return r;
}

QQ operator-(QQ&& a) {
  QQ r(std::move(a));
  if (!r.isZero()) r.isPositive = !r.isPositive;
  return r;
}

QQ operator+(const QQ& a, const QQ& b) {
  QQ r;
  add(r, a, b);
  return r;
}

QQ operator-(const QQ& a, const QQ& b) {
  QQ r;
  sub(r, a, b);
  return r;
}

QQ operator*(const QQ& a, const QQ& b) {
  QQ r;
  mul(r, a, b);
  return r;
}

QQ operator/(const QQ& a, const QQ& b) {
  QQ r;
  div(r, a, b);
  return r;
}

bool operator==(const QQ& a, const QQ& b) { return compare(a, b) == 0; }
bool operator!=(const QQ& a, const QQ& b) { return compare(a, b) != 0; }
bool operator<(const QQ& a, const QQ& b) { return compare(a, b) < 0; }
bool operator<=(const QQ& a, const QQ& b) { return compare(a, b) <= 0; }
bool operator>(const QQ& a, const QQ& b) { return compare(a, b) > 0; }
bool operator>=(const QQ& a, const QQ& b) { return compare(a, b) >= 0; }

ZZ signedGanze(const QQ& x) {
  ZZ r(x.ganze);
  if (!x.isPositive) negate(r);
  return r;
}

ZZ signedZaehler(const QQ& x) {
  ZZ r(x.zaehler);
  if (!x.isPositive) negate(r);
  return r;
}

QQ& normalize(QQ& x) {
  if (x.ganze.sign() < 0 || x.zaehler.sign() < 0 || x.nenner.sign() < 0) {
    reportFailure(messages::kSignInField);
  }
  if (x.isInf) return x;
  if (x.zaehler.isZero()) {
    detail::setUnsigned(x.nenner.value, 1);
    if (x.ganze.isZero()) x.isPositive = true;
    return x;
  }
  Registers& s = registers();
  if (mpz_cmp(x.zaehler.value, x.nenner.value) >= 0) {
    x.zaehler.ensureOwnLimbs();
    x.ganze.ensureOwnLimbs();
    mpz_fdiv_qr(s.t, x.zaehler.value, x.zaehler.value, x.nenner.value);
    mpz_add(x.ganze.value, x.ganze.value, s.t);
  }
  if (x.zaehler.isZero()) {
    detail::setUnsigned(x.nenner.value, 1);
    return x;
  }
  cancel(x.zaehler.value, x.nenner.value, s.t);
  return x;
}

void commonDenominator(ZZ& a_z, ZZ& b_z, ZZ& common, const QQ& a, const QQ& b) {
  if (&a_z == &b_z || &a_z == &common || &b_z == &common) {
    reportFailure(messages::kSameAddress);
  }
  if (a.isInf || b.isInf) reportFailure(messages::kInfinityInCommonDenominator);
  // The outputs may be fields of a or b, so everything is read before anything is written.
  ZZ g;
  mpz_gcd(g.value, a.nenner.value, b.nenner.value);
  ZZ lcm;
  mpz_mul(lcm.value, a.nenner.value, b.nenner.value);
  mpz_fdiv_q(lcm.value, lcm.value, g.value);
  ZZ az;
  mpz_fdiv_q(az.value, lcm.value, a.nenner.value);
  mpz_mul(az.value, az.value, a.zaehler.value);
  ZZ bz;
  mpz_fdiv_q(bz.value, lcm.value, b.nenner.value);
  mpz_mul(bz.value, bz.value, b.zaehler.value);
  a_z = std::move(az);
  b_z = std::move(bz);
  common = std::move(lcm);
}

QQ& limitDigits(QQ& x, long maxDigits, bool keepLeading) {
  const long dn = digitCount(x.nenner);
  if (maxDigits >= dn) return x;
  const long excess = dn - maxDigits;
  const long dz = digitCount(x.zaehler);
  if (excess < dz) {
    dropLastDigits(x.zaehler, excess);
    dropLastDigits(x.nenner, excess);
    return x;
  }
  if (keepLeading) {
    dropLastDigits(x.zaehler, dz - 1);
    ZZ oldNenner(x.nenner);
    appendZeros(dropLastDigits(x.nenner, excess), excess + 1 - dz);
    dropLastDigits(oldNenner, dz - 1);
    if (x.nenner != oldNenner) return x;
  }
  detail::setUnsigned(x.zaehler.value, 0);
  detail::setUnsigned(x.nenner.value, 1);
  return x;
}

}  // namespace lpconv
