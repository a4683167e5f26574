// Every fast path of the converter against its slow twin, on random inputs: the line matchers
// against the regular expressions, the number reader against string-to-double and the 17-digit
// text, Coefficient against QQ, the indexed pairing against the direct search. (The dense row
// writer against the vector's own text is in writer_test.cpp.)
#include <gtest/gtest.h>

#include <climits>
#include <map>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/containers/vector.h>
#include <lpconv/converter/inequality_pairing.h>
#include <lpconv/converter/line_matchers.h>
#include <lpconv/converter/number_reader.h>
#include <lpconv/converter/output_name.h>
#include <lpconv/numbers/tolerance.h>
#include <lpconv/util/full_precision.h>

#include "patterns.h"

#include "direct_pairing.h"

namespace lpconv {
namespace {

std::mt19937_64 engine(20261123);

long uniform(long low, long high) { return std::uniform_int_distribution<long>(low, high)(engine); }

template <typename T>
const T& pick(const std::vector<T>& from) {
  return from[static_cast<std::size_t>(uniform(0, static_cast<long>(from.size()) - 1))];
}

// Short texts of the pieces the patterns care about, so that near misses are common.
std::string randomText() {
  static const std::vector<std::string> pieces = {
      "Min",        "Max",        "min",        "MAX",         "mIn",    "Mi",    ":",      ":",
      "x",          "X",          "x1",         "X23",         "0",      "7",     " ",      "\t",
      "\r",         "\n",         "+",          "-",           "--",     "+-",    "-+",     "++",
      "<=",         ">=",         "=",          "<",           ">",      "lp",    ".",      "a",
      "Subject To", "subject to", "SUBJECT TO", "Subject  To", "Subjec", "Bound", "bounds", "GEN",
      "gen",        "bin",        "BIN",        "Bi",          "Ge",     "Boun",  "o",      "b",
      "\x80",       "\xff"};
  std::string text;
  for (long i = uniform(0, 12); i > 0; --i) text += pick(pieces);
  return text;
}

TEST(FastPathTest, LineMatchersAgreeWithTheRegularExpressions) {
  for (int i = 0; i < 8000; ++i) {
    const std::string text = randomText();
    ASSERT_EQ(containsSubjectTo(text), search(text, "Subject To", false)) << text;
    ASSERT_EQ(namesSection(text), search(text, "Bound|Gen|Bin", false)) << text;
    std::smatch match;
    const auto digits = firstVariableDigits(text);
    ASSERT_EQ(digits.has_value(), searchMatch(text, "x([0-9]+)", match)) << text;
    if (digits) {
      ASSERT_EQ(std::string(*digits), match[1].str()) << text;
    }
    ASSERT_EQ(hasMinimiseHeader(text), search(text, "min(.|\r|\n)*:", false)) << text;
    std::string removed = text;
    const bool changed = removeObjectiveHeader(removed);
    ASSERT_EQ(removed, replacePattern(text, "(Min|Max)(.|\r|\n)*:", "")) << text;
    ASSERT_EQ(changed, removed != text) << text;
    std::string normal = replacePattern(text, "( |\t|\r|\n)", "");
    for (const auto& [from, to] :
         {std::pair{"\\+-", "-"}, {"-\\+", "-"}, {"--", "+"}, {"\\+\\+", "+"}}) {
      normal = replacePattern(normal, from, to);
    }
    ASSERT_EQ(normaliseExpression(text), normal) << text;
    ASSERT_EQ(outputNameFor(text), replacePattern(text, ".lp$", ".opt")) << text;
  }
}

// Numerals around the fast path's digit limit, decimals, exponents, and what follows in a line.
TEST(FastPathTest, NumberReaderEqualsTheLiteralRoute) {
  const auto digits = [](long count) {
    std::string s;
    for (long i = 0; i < count; ++i) s += static_cast<char>('0' + uniform(0, 9));
    return s;
  };
  const std::vector<std::string> followers = {"", "x1", " x12", "+x3", "-", "<=4", "\r", ".", "e"};
  for (int i = 0; i < 200000; ++i) {
    const long form = uniform(0, 3);
    std::string text = form == 0   ? digits(uniform(1, 18))
                       : form == 1 ? digits(uniform(0, 5)) + "." + digits(uniform(0, 20))
                       : form == 2 ? digits(uniform(1, 4)) + "e" +
                                         pick(std::vector<std::string>{"", "-", "+"}) +
                                         digits(uniform(0, 3))
                                   : digits(uniform(0, 25));
    text += pick(followers);
    std::ostringstream literal;
    setFullPrecision(literal) << static_cast<dbl_t>(readDecimal(text.c_str()));
    ASSERT_TRUE(sameFields(readCoefficient(text.c_str()).toQQ(), QQ(literal.str()))) << text;
  }
}

// Values on both sides of the inline limit, pairs at the tolerance, large denominators, infinities.
QQ randomValue() {
  const QQ limit(Coefficient::kInlineLimit);
  const long small = uniform(-50, 50);
  const long wide = uniform(-(1L << 40), 1L << 40);
  const long positive = uniform(1, 1L << 40);
  switch (uniform(0, 10)) {
    case 0:
      return QQ(small, positive % 97 + 1);
    case 1:
      return QQ(wide, positive);
    case 2:
      return limit + QQ(small);
    case 3:
      return -limit + QQ(small);
    case 4:
      return QQ(small, Coefficient::kInlineLimit - positive % 3);
    case 5:
      return QQ(small) + QQ(small, 10000000000L);
    case 6:
      return small > 0 ? QQ::infinity() : QQ::minusInfinity();
    case 7:
      return QQ(wide) * QQ(wide) / QQ(positive);
    case 8:
      return QQ(std::string("123456789012345678901234567890"));
    default:
      return QQ(small);
  }
}

TEST(FastPathTest, CoefficientAgreesWithQQ) {
  for (int i = 0; i < 30000; ++i) {
    const QQ a = randomValue();
    const QQ b = i % 3 == 0 ? a + QQ(static_cast<long>(i % 5) - 2, 1000000000L) : randomValue();
    const Coefficient ca(a);
    const Coefficient cb(b);
    ASSERT_TRUE(sameFields(ca.toQQ(), a)) << a;
    ASSERT_EQ(toString(ca), toString(a)) << a;
    ASSERT_EQ(ca.isInline(), !a.isInf && a.nenner < ZZ(Coefficient::kInlineLimit) &&
                                 a.ganze * a.nenner + a.zaehler < ZZ(Coefficient::kInlineLimit))
        << a;
    ASSERT_EQ(identical(ca, cb), sameFields(a, b)) << a << " " << b;
    ASSERT_EQ(withinTolerance(ca, cb), withinEqualityTolerance(a, b)) << a << " " << b;
    if (!(a.isInf && b.isInf && a.isPositive == b.isPositive)) {
      QQ difference;
      sub(difference, a, b);
      ASSERT_TRUE(sameFields(subtract(ca, cb).toQQ(), difference)) << a << " - " << b;
    }
    if (!(a.isInf && b.isInf && a.isPositive != b.isPositive)) {
      QQ sum;
      add(sum, a, b);
      ASSERT_TRUE(sameFields(add(ca, cb).toQQ(), sum)) << a << " + " << b;
    }
  }
}

// Rows of up to 70 assignments in any order (both sorting paths), with repeated indices, zeros and
// indices too large for the short path's keys, against "the last assignment wins, zeros go".
TEST(FastPathTest, FinishedRowsKeepTheLastAssignments) {
  const std::vector<QQ> values = {QQ(0L), QQ(1L), QQ(-2L, 3L), QQ::infinity(),
                                  QQ(std::string(30, '9'))};
  for (int round = 0; round < 3000; ++round) {
    const long n = round % 2 == 0 ? 8 : 100;
    SparseRow row;
    std::map<long, QQ> last;
    for (long e = uniform(0, 70); e > 0; --e) {
      const long index = round % 7 == 0 && e % 3 == 0 ? LONG_MAX - uniform(0, 2) : uniform(1, n);
      const QQ& value = pick(values);
      row.assign(index, value);
      last[index] = value;
    }
    row.finish();
    std::string expected;
    for (const auto& [index, value] : last) {
      if (!value.isZero()) expected += std::to_string(index) + ":" + toString(value) + " ";
    }
    std::string got;
    for (const RowEntry& e : row.entries()) {
      got += std::to_string(e.index) + ":" + toString(e.value) + " ";
    }
    ASSERT_EQ(got, expected) << round;
  }
}

SparseRow randomRow(long n, const std::vector<QQ>& values) {
  SparseRow row;
  for (long e = uniform(0, 4); e > 0; --e) row.assign(uniform(1, n), pick(values));
  row.finish();
  return row;
}

// Duplicates, rows within and just beyond 1/10^9, infinite entries and entries too large for
// the index's sums all meet often.
TEST(FastPathTest, IndexedPairingEqualsTheDirectSearch) {
  const QQ tiny(1L, 10000000000L);
  const QQ huge(std::string("1") + std::string(300, '0'));
  const QQ vast(std::string("1") + std::string(5000, '0'));
  const std::vector<QQ> values = {QQ(1L),
                                  QQ(-3L),
                                  QQ(1L) + tiny,
                                  QQ(1L) + QQ(1L, 1000000000L),
                                  QQ(1L) + QQ(11L, 10000000000L),
                                  QQ::infinity(),
                                  QQ::minusInfinity(),
                                  huge,
                                  huge + tiny,
                                  -huge,
                                  vast,
                                  vast + tiny,
                                  -vast};
  for (int round = 0; round < 3000; ++round) {
    const long n = 1 + round % 3;
    Constraints model;
    for (long i = uniform(0, 12); i > 0; --i)
      model.greaterEqual.push_back({randomRow(n, values), QQ(i)});
    for (long i = uniform(0, 12); i > 0; --i) {
      const bool copy = !model.greaterEqual.empty() && i % 2 == 0;
      model.lessEqual.push_back(
          {copy ? pick(model.greaterEqual).coefficients : randomRow(n, values), QQ(100 + i)});
    }
    const auto fast = pairInequalities(model);
    const auto slow = oracle::pairInequalitiesDirectly(model);
    ASSERT_EQ(fast.size(), slow.size());
    for (std::size_t i = 0; i < fast.size(); ++i) {
      ASSERT_EQ(fast[i].coefficients, slow[i].coefficients) << round;
      ASSERT_EQ(fast[i].lower, slow[i].lower) << round;
      ASSERT_EQ(fast[i].upper, slow[i].upper) << round;
    }
  }
}

}  // namespace
}  // namespace lpconv
