#include <lpconv/numbers/coefficient.h>
#include <lpconv/numbers/internal/mixed_text.h>
#include <lpconv/numbers/internal/wide_int.h>

#include <charconv>

#include <lpconv/numbers/tolerance.h>

namespace lpconv {

static_assert(Coefficient::kInlineLimit == static_cast<std::int64_t>(detail::kSmallLimit));

namespace {

using detail::i128;
using detail::u128;

u128 magnitude(i128 v) { return v < 0 ? static_cast<u128>(-v) : static_cast<u128>(v); }

u128 gcd128(u128 a, u128 b) {
  while (b != 0) {
    const u128 r = a % b;
    a = b;
    b = r;
  }
  return a;
}

// Whether a non-negative field is below the inline limit, and its value.
bool inlinePart(const ZZ& z, std::int64_t& value) {
  std::uint64_t v = 0;
  if (mpz_sgn(z.value) < 0 || !detail::smallPart(z, v)) return false;
  value = static_cast<std::int64_t>(v);
  return true;
}

// numerator / denominator in lowest terms, denominator > 0, as a Coefficient.
Coefficient fromFraction(i128 numerator, i128 denominator) {
  const u128 g = gcd128(magnitude(numerator), magnitude(denominator));
  if (g > 1) {
    numerator /= static_cast<i128>(g);
    denominator /= static_cast<i128>(g);
  }
  if (magnitude(numerator) < static_cast<u128>(Coefficient::kInlineLimit) &&
      denominator < Coefficient::kInlineLimit) {
    return Coefficient::fromLowestTerms(static_cast<std::int64_t>(numerator),
                                        static_cast<std::int64_t>(denominator));
  }
  ZZ num;
  ZZ den;
  detail::setWide(num.value, magnitude(numerator));
  if (numerator < 0) mpz_neg(num.value, num.value);
  detail::setWide(den.value, static_cast<u128>(denominator));
  return Coefficient(QQ(std::move(num), std::move(den)));
}

void appendUnsigned(std::string& out, std::uint64_t v) {
  char digits[24];
  const auto end = std::to_chars(digits, digits + sizeof digits, v).ptr;
  out.append(digits, end);
}

struct InlineTextSink {
  std::string& out;
  static bool isZero(std::uint64_t v) { return v == 0; }
  static bool isOne(std::uint64_t v) { return v == 1; }
  void mark(char c) { out.push_back(c); }
  void part(std::uint64_t v) { appendUnsigned(out, v); }
};

}  // namespace

Coefficient::Coefficient(const QQ& value) {
  if (!value.isInf && mpz_cmp_ui(value.nenner.value, 1) == 0) {
    std::int64_t whole = 0;
    if (inlinePart(value.ganze, whole)) {
      numerator_ = value.isPositive ? whole : -whole;
      return;
    }
  } else if (!value.isInf) {
    std::int64_t whole = 0;
    std::int64_t part = 0;
    std::int64_t denominator = 0;
    if (inlinePart(value.ganze, whole) && inlinePart(value.zaehler, part) &&
        inlinePart(value.nenner, denominator)) {
      const i128 num = static_cast<i128>(whole) * denominator + part;
      if (num < kInlineLimit) {
        numerator_ = static_cast<std::int64_t>(value.isPositive ? num : -num);
        denominator_ = denominator;
        return;
      }
    }
  }
  big_ = std::make_unique<QQ>(value);
}

const Coefficient& Coefficient::infinity() {
  static const Coefficient value(QQ::infinity());
  return value;
}

const Coefficient& Coefficient::minusInfinity() {
  static const Coefficient value(QQ::minusInfinity());
  return value;
}

Coefficient::Coefficient(const Coefficient& other)
    : numerator_(other.numerator_),
      denominator_(other.denominator_),
      big_(other.big_ ? std::make_unique<QQ>(*other.big_) : nullptr) {}

Coefficient& Coefficient::operator=(const Coefficient& other) {
  if (this != &other) *this = Coefficient(other);
  return *this;
}

void Coefficient::negateBig() {
  if (!big_->isZero()) big_->isPositive = !big_->isPositive;
}

QQ Coefficient::toQQ() const {
  if (big_) return *big_;
  if (denominator_ == 1) return QQ(static_cast<long>(numerator_));
  return QQ(static_cast<long>(numerator_), static_cast<long>(denominator_));
}

namespace {

// a + sign * b for two inline values.
Coefficient combineInline(const Coefficient& a, const Coefficient& b, int sign) {
  if (b.numerator() == 0) return a;
  const i128 bNumerator = static_cast<i128>(sign) * b.numerator();
  if (a.denominator() == 1 && b.denominator() == 1) {
    return fromFraction(static_cast<i128>(a.numerator()) + bNumerator, 1);
  }
  const i128 numerator =
      static_cast<i128>(a.numerator()) * b.denominator() + bNumerator * a.denominator();
  return fromFraction(numerator, static_cast<i128>(a.denominator()) * b.denominator());
}

}  // namespace

Coefficient add(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() && b.isInline()) return combineInline(a, b, 1);
  QQ r;
  lpconv::add(r, a.toQQ(), b.toQQ());
  return Coefficient(r);
}

Coefficient subtract(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() && b.isInline()) return combineInline(a, b, -1);
  QQ r;
  sub(r, a.toQQ(), b.toQQ());
  return Coefficient(r);
}

bool identical(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() != b.isInline()) return false;
  if (a.isInline()) return a.numerator() == b.numerator() && a.denominator() == b.denominator();
  return sameFields(a.big(), b.big());
}

bool sameFields(const QQ& a, const QQ& b) {
  return a.isInf == b.isInf && a.isPositive == b.isPositive &&
         mpz_cmp(a.ganze.value, b.ganze.value) == 0 &&
         mpz_cmp(a.zaehler.value, b.zaehler.value) == 0 &&
         mpz_cmp(a.nenner.value, b.nenner.value) == 0;
}

bool withinTolerance(const Coefficient& a, const Coefficient& b) {
  if (a.isInline() && b.isInline()) {
    if (a.numerator() == b.numerator() && a.denominator() == b.denominator()) return true;
    // |a - b| <= 1/10^9  <=>  |an * bd - bn * ad| * 10^9 <= ad * bd.
    const i128 difference = static_cast<i128>(a.numerator()) * b.denominator() -
                            static_cast<i128>(b.numerator()) * a.denominator();
    const u128 denominators =
        static_cast<u128>(a.denominator()) * static_cast<u128>(b.denominator());
    return magnitude(difference) <= denominators / kToleranceDenominator;
  }
  return withinEqualityTolerance(a.toQQ(), b.toQQ());
}

void appendText(std::string& out, const Coefficient& c) {
  if (!c.isInline()) {
    appendText(out, c.big());
    return;
  }
  const std::int64_t num = c.numerator();
  const auto magnitude = static_cast<std::uint64_t>(num < 0 ? -num : num);
  const auto den = static_cast<std::uint64_t>(c.denominator());
  InlineTextSink sink{out};
  detail::layOutMixed(sink, num < 0, magnitude / den, magnitude % den, den);
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
