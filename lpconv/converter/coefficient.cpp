#include <lpconv/converter/coefficient.h>

#include <charconv>

#include <lpconv/containers/vector.h>

namespace lpconv {

namespace {

// 128-bit products of two inline parts; a compiler extension, hence the marker.
__extension__ typedef __int128 Int128;
__extension__ typedef unsigned __int128 UInt128;

UInt128 magnitude(Int128 v) { return v < 0 ? static_cast<UInt128>(-v) : static_cast<UInt128>(v); }

UInt128 gcd128(UInt128 a, UInt128 b) {
  while (b != 0) {
    const UInt128 r = a % b;
    a = b;
    b = r;
  }
  return a;
}

// A GMP integer from a 128-bit magnitude.
void setMagnitude(mpz_t z, UInt128 v) {
  const auto high = static_cast<unsigned long>(v >> 64);
  const auto low = static_cast<unsigned long>(v);
  mpz_set_ui(z, high);
  mpz_mul_2exp(z, z, 64);
  mpz_add_ui(z, z, low);
}

// Whether a GMP integer is non-negative and at most `limit`, and its value.
bool fitsLimit(const mpz_t z, std::int64_t limit, std::int64_t& value) {
  if (mpz_sgn(z) < 0 || !mpz_fits_slong_p(z)) return false;
  const long v = mpz_get_si(z);
  if (v > limit) return false;
  value = v;
  return true;
}

// numerator / denominator in lowest terms, denominator > 0, as a Coefficient.
Coefficient fromFraction(Int128 numerator, Int128 denominator) {
  const UInt128 g = gcd128(magnitude(numerator), magnitude(denominator));
  if (g > 1) {
    numerator /= static_cast<Int128>(g);
    denominator /= static_cast<Int128>(g);
  }
  if (magnitude(numerator) <= static_cast<UInt128>(Coefficient::smallLimit) &&
      denominator <= Coefficient::smallLimit) {
    return Coefficient::fromLowestTerms(static_cast<std::int64_t>(numerator),
                                        static_cast<std::int64_t>(denominator));
  }
  ZZ num;
  ZZ den;
  setMagnitude(num.value, magnitude(numerator));
  if (numerator < 0) mpz_neg(num.value, num.value);
  setMagnitude(den.value, static_cast<UInt128>(denominator));
  return Coefficient(QQ(std::move(num), std::move(den)));
}

void appendUnsigned(std::string& out, std::uint64_t v) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, v).ptr;
  out.append(digits, end);
}

}  // namespace

Coefficient::Coefficient(const QQ& value) {
  if (!value.isInf && mpz_cmp_ui(value.nenner.value, 1) == 0) {
    std::int64_t whole = 0;
    if (fitsLimit(value.ganze.value, smallLimit, whole)) {
      numerator_ = value.isPositive ? whole : -whole;
      return;
    }
  } else if (!value.isInf) {
    std::int64_t whole = 0;
    std::int64_t part = 0;
    std::int64_t denominator = 0;
    if (fitsLimit(value.ganze.value, smallLimit, whole) &&
        fitsLimit(value.zaehler.value, smallLimit, part) &&
        fitsLimit(value.nenner.value, smallLimit, denominator)) {
      const Int128 num = static_cast<Int128>(whole) * denominator + part;
      if (num <= smallLimit) {
        numerator_ = static_cast<std::int64_t>(value.isPositive ? num : -num);
        denominator_ = denominator;
        return;
      }
    }
  }
  big_ = std::make_unique<QQ>(value);
}

Coefficient::Coefficient(const Coefficient& other)
    : numerator_(other.numerator_),
      denominator_(other.denominator_),
      big_(other.big_ ? std::make_unique<QQ>(*other.big_) : nullptr) {}

Coefficient& Coefficient::operator=(const Coefficient& other) {
  if (this != &other) *this = Coefficient(other);
  return *this;
}

void Coefficient::negate() {
  if (big_) {
    if (!big_->isZero()) big_->isPositive = !big_->isPositive;
  } else {
    numerator_ = -numerator_;
  }
}

QQ Coefficient::toQQ() const {
  if (big_) return *big_;
  if (denominator_ == 1) return QQ(static_cast<long>(numerator_));
  return QQ(static_cast<long>(numerator_), static_cast<long>(denominator_));
}

Coefficient subtract(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() && b.isInline()) {
    if (b.numerator() == 0) return a;
    if (a.denominator() == 1 && b.denominator() == 1) {
      return fromFraction(static_cast<Int128>(a.numerator()) - b.numerator(), 1);
    }
    const Int128 numerator = static_cast<Int128>(a.numerator()) * b.denominator() -
                             static_cast<Int128>(b.numerator()) * a.denominator();
    return fromFraction(numerator, static_cast<Int128>(a.denominator()) * b.denominator());
  }
  QQ r;
  sub(r, a.toQQ(), b.toQQ());
  return Coefficient(r);
}

bool identical(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() != b.isInline()) return false;
  if (a.isInline()) return a.numerator() == b.numerator() && a.denominator() == b.denominator();
  const QQ& x = a.big();
  const QQ& y = b.big();
  return x.isInf == y.isInf && x.isPositive == y.isPositive &&
         mpz_cmp(x.ganze.value, y.ganze.value) == 0 &&
         mpz_cmp(x.zaehler.value, y.zaehler.value) == 0 &&
         mpz_cmp(x.nenner.value, y.nenner.value) == 0;
}

bool withinTolerance(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() && b.isInline()) {
    if (a.numerator() == b.numerator() && a.denominator() == b.denominator()) return true;
    // |a - b| <= 1/10^9  <=>  |an * bd - bn * ad| * 10^9 <= ad * bd.
    const Int128 difference = static_cast<Int128>(a.numerator()) * b.denominator() -
                              static_cast<Int128>(b.numerator()) * a.denominator();
    const UInt128 denominators = static_cast<UInt128>(a.denominator()) *
                                 static_cast<UInt128>(b.denominator());
    return magnitude(difference) <= denominators / 1000000000u;
  }
  return withinVectorTolerance(a.toQQ(), b.toQQ());
}

void appendText(std::string& out, const Coefficient& c) {
  if (!c.isInline()) {
    appendText(out, c.big());
    return;
  }
  const std::int64_t num = c.numerator();
  if (num == 0) {
    out.push_back('0');
    return;
  }
  if (num < 0) out.push_back('-');
  const auto magnitude = static_cast<std::uint64_t>(num < 0 ? -num : num);
  const auto den = static_cast<std::uint64_t>(c.denominator());
  const std::uint64_t whole = magnitude / den;
  const std::uint64_t part = magnitude % den;
  if (whole != 0) {
    appendUnsigned(out, whole);
    if (part != 0) out.push_back(':');
  }
  if (part != 0) {
    appendUnsigned(out, part);
    out.push_back('/');
    appendUnsigned(out, den);
  }
}

std::string toString(const Coefficient& c) {
  std::string out;
  appendText(out, c);
  return out;
}

dbl_t approximate(const Coefficient& c) {
  if (c.isInline()) {
    return static_cast<dbl_t>(c.numerator()) / static_cast<dbl_t>(c.denominator());
  }
  return toDbl(c.big());
}

}  // namespace lpconv
