// Rounding, remainder, roots, powers and logarithms of QQ.

#include <cmath>
#include <utility>

#include <lpconv/numbers/internal/binary_scale.h>
#include <lpconv/numbers/messages.h>
#include <lpconv/numbers/qq.h>
#include <lpconv/util/failure.h>

namespace lpconv {

namespace {

// Improper numerator (with the value's sign) and denominator of a finite x.
void improper(const QQ& x, ZZ& numerator, ZZ& denominator) {
  mpz_mul(numerator.value, x.ganze.value, x.nenner.value);
  mpz_add(numerator.value, numerator.value, x.zaehler.value);
  if (!x.isPositive) negate(numerator);
  denominator = x.nenner;
}

// Keeps an approximation at digitLimit denominator digits, in canonical form.
QQ& shorten(QQ& x) {
  limitDigits(x, digitLimit, true);
  return normalize(x);
}

// One Newton step towards the n-th root of x: ((n - 1)·y + x / y^(n-1)) / n, shortened.
QQ newtonStep(const QQ& y, const QQ& x, unsigned long n) {
  ZZ numerator;
  ZZ denominator;
  improper(y, numerator, denominator);
  mpz_pow_ui(numerator.value, numerator.value, n - 1);
  mpz_pow_ui(denominator.value, denominator.value, n - 1);
  const QQ yPower(std::move(numerator), std::move(denominator));
  QQ next = QQ(static_cast<long>(n - 1)) * y + x / yPower;
  next /= QQ(ZZ(n));
  shorten(next);
  return next;
}

// The n-th root of a finite x > 0 for n >= 2: exact when numerator and denominator are exact
// powers, otherwise Newton's iteration from a floating-point estimate.
QQ positiveRoot(const QQ& x, const ZZ& n) {
  if (!mpz_fits_ulong_p(n.value)) {
    // Roots of such orders differ from 1 by far less than the digit limit resolves.
    return QQ::one();
  }
  const unsigned long order = mpz_get_ui(n.value);
  ZZ numerator;
  ZZ denominator;
  improper(x, numerator, denominator);
  ZZ numeratorRoot;
  ZZ denominatorRoot;
  const bool exactNumerator = mpz_root(numeratorRoot.value, numerator.value, order) != 0;
  const bool exactDenominator = mpz_root(denominatorRoot.value, denominator.value, order) != 0;
  if (exactNumerator && exactDenominator) return QQ(numeratorRoot, denominatorRoot);

  QQ y;
  const dbl_t estimate = std::pow(toDbl(x), 1.0L / static_cast<dbl_t>(order));
  if (std::isfinite(estimate) && estimate > 0) {
    y = fromDbl(estimate);
  } else {
    // Out of the floating range: (floor root of the numerator + 1) / (floor root of the
    // denominator) lies above the root.
    ++numeratorRoot;
    y = QQ(numeratorRoot, denominatorRoot);
  }
  // From any positive start the first step lands above the root; from there the steps fall
  // until the shortening stops them.
  y = newtonStep(y, x, order);
  for (int i = 0; i < 200; ++i) {
    QQ next = newtonStep(y, x, order);
    if (compare(next, y) >= 0) break;
    y = std::move(next);
  }
  return y;
}

// ln 2 to more digits than the digit limit resolves.
const QQ& naturalLogOfTwo() {
  static const QQ kLn2("0.693147180559945309417232121458176568");
  return kLn2;
}

}  // namespace

QQ floor(const QQ& x) {
  if (x.isInf) return x;
  if (x.zaehler.isZero()) {
    if (x.ganze.isZero()) return QQ();
    return QQ(signedGanze(x));
  }
  if (x.isPositive) return QQ(x.ganze);
  ZZ below(x.ganze);
  ++below;
  return QQ(negate(below));
}

QQ ceil(const QQ& x) {
  if (x.isInf) return x;
  if (x.zaehler.isZero()) {
    if (x.ganze.isZero()) return QQ();
    return QQ(signedGanze(x));
  }
  if (x.isPositive) {
    ZZ above(x.ganze);
    ++above;
    return QQ(std::move(above));
  }
  return QQ(-x.ganze);
}

QQ round(const QQ& x) {
  if (x.isInf) return x;
  static const QQ kZero;
  if (compare(x, kZero) <= 0) return ceil(x - QQ::half());
  return floor(x + QQ::half());
}

QQ remainder(const QQ& a, const QQ& b) {
  QQ t = a / b;
  t = round(t);
  t *= b;
  return a - t;
}

QQ root(const QQ& x, const ZZ& n) {
  if (n.isZero()) reportFailure(messages::kZerothRoot);
  if (mpz_cmp_ui(n.value, 1) == 0) return x;
  if (!x.isPositive) {
    if (mpz_even_p(n.value)) reportFailure(messages::kComplexRoot);
    return -root(-x, n);
  }
  if (n.sign() < 0) {
    if (x.ganze.isZero() && x.zaehler.isZero()) reportFailure(messages::kDivisionByZero);
    return QQ::one() / root(x, -n);
  }
  if (x.isInf) return x;
  if (x.isZero()) return x;
  return positiveRoot(x, n);
}

QQ power(const QQ& x, const QQ& e) {
  if (!e.isPositive) {
    QQ r = QQ::one() / power(x, -e);
    normalize(r);
    return r;
  }
  if (e.isInf) {
    // A base above 1 grows without bound, 1 stays 1, a base below 1 vanishes.
    const std::int64_t c = compare(x, QQ::one());
    if (c > 0) return QQ::infinity();
    if (c == 0) return QQ::one();
    return QQ();
  }
  if (x.isInf) {
    if (e.isZero()) return QQ::one();
    const QQ sign = power(QQ(x.isPositive ? 1L : -1L), e);
    return QQ(sign.isPositive);
  }
  ZZ numerator;
  ZZ denominator;
  improper(x, numerator, denominator);
  QQ r(pow(numerator, e.ganze), pow(denominator, e.ganze));
  if (!e.zaehler.isZero()) {
    const QQ raised(pow(numerator, e.zaehler), pow(denominator, e.zaehler));
    r *= root(raised, e.nenner);
  }
  return r;
}

QQ log2(const QQ& x) {
  if (x.isInf) {
    if (!x.isPositive) reportFailure(messages::kLog2MinusInf);
    return x;
  }
  if (!x.isPositive || x.isZero()) reportFailure(messages::kLog2NotPositive);
  ZZ numerator;
  ZZ denominator;
  improper(x, numerator, denominator);
  // k = floor(log2 x), so that y = x / 2^k lies in [1, 2).
  const long k = detail::scaleIntoUnitOctave(numerator, denominator);
  QQ y(std::move(numerator), std::move(denominator));
  // Each squaring of y in [1, 2) moves the next binary digit of the logarithm in front.
  static const QQ kTwo(2L);
  QQ result(k);
  QQ bit = QQ::half();
  for (int i = 0; i < 64 && compare(y, QQ::one()) != 0; ++i) {
    y *= y;
    shorten(y);
    if (compare(y, kTwo) >= 0) {
      result += bit;
      y /= kTwo;
    }
    bit /= kTwo;
  }
  shorten(result);
  return result;
}

QQ log(const QQ& x) {
  if (x.isInf && !x.isPositive) reportFailure(messages::kLogMinusInf);
  if (x.isInf) return x;
  QQ r = log2(x) * naturalLogOfTwo();
  shorten(r);
  return r;
}

}  // namespace lpconv
