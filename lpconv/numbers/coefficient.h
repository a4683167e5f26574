#pragma once
// An exact coefficient as the converter stores it in its rows: a canonical fraction of two 64-bit
// integers held inline, or a QQ for everything that does not fit (infinities, long numbers).
// Coefficients of ordinary LP files never touch the heap; every value keeps exactly the value,
// the text and the comparisons it would have as a QQ.

#include <cstdint>
#include <memory>
#include <string>

#include <lpconv/numbers/qq.h>

namespace lpconv {

class Coefficient {
 public:
  Coefficient() = default;  // 0
  explicit Coefficient(long integer) : numerator_(integer) {
    if (integer <= -kInlineLimit || integer >= kInlineLimit) *this = Coefficient(QQ(integer));
  }
  // Takes the inline form whenever the value fits it.
  Coefficient(const QQ& value);  // NOLINT(google-explicit-constructor): a QQ is a coefficient
  Coefficient(const Coefficient& other);
  Coefficient(Coefficient&& other) noexcept = default;
  Coefficient& operator=(const Coefficient& other);
  Coefficient& operator=(Coefficient&& other) noexcept = default;
  ~Coefficient() = default;

  bool isZero() const { return big_ ? big_->isZero() : numerator_ == 0; }
  bool isInline() const { return big_ == nullptr; }
  // Flips the sign; zero stays zero.
  void negate() {
    if (big_) {
      negateBig();
    } else {
      numerator_ = -numerator_;
    }
  }

  QQ toQQ() const;
  // The inline parts (valid when isInline()): numerator / denominator, denominator > 0, in
  // lowest terms.
  std::int64_t numerator() const { return numerator_; }
  std::int64_t denominator() const { return denominator_; }
  // The QQ form (valid when !isInline()).
  const QQ& big() const { return *big_; }

  // The shared +infinity and -infinity, built at first use.
  static const Coefficient& infinity();
  static const Coefficient& minusInfinity();

  // numerator / denominator already in lowest terms, denominator > 0, both below kInlineLimit.
  static Coefficient fromLowestTerms(std::int64_t numerator, std::int64_t denominator) {
    Coefficient c;
    c.numerator_ = numerator;
    c.denominator_ = denominator;
    return c;
  }

  // Both parts of the inline form stay below the wide arithmetic's small limit (2^62), so the
  // products of two of them fit in 128 bits with room for a sum.
  static constexpr std::int64_t kInlineLimit = std::int64_t{1} << 62;

 private:
  void negateBig();

  std::int64_t numerator_ = 0;
  std::int64_t denominator_ = 1;
  std::unique_ptr<QQ> big_;
};

// a + b and a - b, exactly as QQ addition and subtraction give them (including "INF - INF is not
// defined").
Coefficient add(const Coefficient& a, const Coefficient& b);
Coefficient subtract(const Coefficient& a, const Coefficient& b);

// The same value (canonical forms make this field equality).
bool identical(const Coefficient& a, const Coefficient& b);
// The same QQ, field by field (flags and the three integers).
bool sameFields(const QQ& a, const QQ& b);

// The pairing test for one entry: false when the two differ by more than 1/10^9, decided as the
// QQ comparison and subtraction decide it.
bool withinTolerance(const Coefficient& a, const Coefficient& b);

// Appends the QQ written form ("0", "-1/2", "3:1/2", "inf").
void appendText(std::string& out, const Coefficient& c);
std::string toString(const Coefficient& c);

// The value as a long double, to within a few units in the last place (an infinity for values
// beyond its range and for the infinities).
dbl_t approximate(const Coefficient& c);

}  // namespace lpconv
