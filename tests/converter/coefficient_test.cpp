#include <lpconv/converter/coefficient.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include <lpconv/containers/vector.h>

namespace lpconv {
namespace {

bool sameQQ(const QQ& a, const QQ& b) {
  return a.isInf == b.isInf && a.isPositive == b.isPositive &&
         mpz_cmp(a.ganze.value, b.ganze.value) == 0 &&
         mpz_cmp(a.zaehler.value, b.zaehler.value) == 0 &&
         mpz_cmp(a.nenner.value, b.nenner.value) == 0;
}

// Values on both sides of the inline limit 2^62, near-equal pairs, fractions with large
// denominators, infinities: the inline arithmetic must give exactly what QQ gives.
class RandomValues {
 public:
  explicit RandomValues(unsigned seed) : engine_(seed) {}

  QQ next() {
    const QQ limit(Coefficient::smallLimit);
    std::uniform_int_distribution<int> form(0, 11);
    std::uniform_int_distribution<long> small(-50, 50);
    std::uniform_int_distribution<long> wide(-(1L << 40), 1L << 40);
    std::uniform_int_distribution<long> positive(1, 1L << 40);
    switch (form(engine_)) {
      case 0: return QQ(small(engine_));
      case 1: return QQ(small(engine_), positive(engine_) % 97 + 1);
      case 2: return QQ(wide(engine_), positive(engine_));
      case 3: return limit + QQ(small(engine_));
      case 4: return -limit + QQ(small(engine_));
      case 5: return QQ(small(engine_), Coefficient::smallLimit - positive(engine_) % 3);
      case 6: return QQ(1L, 1000000000L) * QQ(small(engine_));
      case 7: return QQ(small(engine_)) + QQ(small(engine_), 10000000000L);
      case 8: return small(engine_) > 0 ? QQ::infinity() : QQ::minusInfinity();
      case 9: return QQ(wide(engine_)) * QQ(wide(engine_)) / QQ(positive(engine_));
      case 10: return QQ(std::string("123456789012345678901234567890"));
      default: return QQ(wide(engine_));
    }
  }

 private:
  std::mt19937_64 engine_;
};

TEST(CoefficientTest, RoundTripTextAndInlineForm) {
  RandomValues values(1);
  for (int i = 0; i < 20000; ++i) {
    const QQ q = values.next();
    const Coefficient c(q);
    ASSERT_TRUE(sameQQ(c.toQQ(), q)) << q;
    ASSERT_EQ(toString(c), toString(q)) << q;
    // Inline exactly when the improper fraction fits within the limit on both parts.
    const bool fits = !q.isInf && q.nenner <= ZZ(Coefficient::smallLimit) &&
                      q.ganze * q.nenner + q.zaehler <= ZZ(Coefficient::smallLimit);
    ASSERT_EQ(c.isInline(), fits) << q;
  }
}

TEST(CoefficientTest, SubtractionAndToleranceAgreeWithQQ) {
  RandomValues values(2);
  const QQ& tolerance = vectorEqualityTolerance();
  for (int i = 0; i < 20000; ++i) {
    const QQ a = values.next();
    QQ b = values.next();
    if (i % 3 == 0) b = a + QQ(static_cast<long>(i % 5) - 2, 1000000000L);  // at the tolerance
    const Coefficient ca(a);
    const Coefficient cb(b);
    ASSERT_EQ(identical(ca, cb), a.isInf == b.isInf && compare(a, b) == 0) << a << " " << b;

    const bool bothInfiniteAlike = a.isInf && b.isInf && a.isPositive == b.isPositive;
    if (!bothInfiniteAlike) {
      QQ difference;
      sub(difference, a, b);
      const Coefficient c = subtract(ca, cb);
      ASSERT_TRUE(sameQQ(c.toQQ(), difference)) << a << " - " << b;
      ASSERT_EQ(c.isInline(), Coefficient(difference).isInline());
    }

    bool expected = compare(a, b) == 0;
    if (!expected) {
      QQ difference;
      sub(difference, a, b);
      if (!difference.isPositive) difference = -difference;
      expected = compare(difference, tolerance) <= 0;
    }
    ASSERT_EQ(withinTolerance(ca, cb), expected) << a << " vs " << b;
  }
}

TEST(CoefficientTest, WrittenFormsOfInlineValues) {
  const std::vector<std::pair<Coefficient, std::string>> cases = {
      {Coefficient(), "0"},
      {Coefficient(-42L), "-42"},
      {Coefficient(QQ(1L, 2L)), "1/2"},
      {Coefficient(QQ(-7L, 2L)), "-3:1/2"},
      {Coefficient(Coefficient::smallLimit), "4611686018427387904"},
      {Coefficient(Coefficient::smallLimit + 1), "4611686018427387905"},
      {Coefficient(QQ::minusInfinity()), "-inf"},
  };
  for (const auto& [c, text] : cases) EXPECT_EQ(toString(c), text);
}

TEST(CoefficientTest, NegateKeepsZeroPositiveAndFlipsInfinities) {
  Coefficient zero;
  zero.negate();
  EXPECT_EQ(toString(zero), "0");
  Coefficient inf(QQ::infinity());
  inf.negate();
  EXPECT_EQ(toString(inf), "-inf");
  Coefficient half(QQ(1L, 2L));
  half.negate();
  EXPECT_EQ(toString(half), "-1/2");
}

}  // namespace
}  // namespace lpconv
