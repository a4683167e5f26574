#include <lpconv/converter/inequality_pairing.h>

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace lpconv {
namespace {

// Rows drawn from a small pool so that duplicates, rows within 1/10^9 of each other, rows just
// beyond it, infinite and huge entries all meet often.
class RandomRows {
 public:
  explicit RandomRows(unsigned seed) : engine_(seed) {
    const QQ tiny = QQ(1L, 10000000000L);         // 1/10^10: within the tolerance
    const QQ limit = QQ(1L, 1000000000L);         // exactly the tolerance: still equal
    const QQ beyond = QQ(11L, 10000000000L);      // just above it
    const QQ huge = QQ(std::string("1") + std::string(300, '0'));  // as large as LP text gives
    // Beyond the range of the index's sums: such rows are searched one by one.
    const QQ vast = QQ(std::string("1") + std::string(5000, '0'));
    values_ = {QQ(1L),         QQ(2L),         QQ(-3L),         QQ(1L) + tiny, QQ(1L) - tiny,
               QQ(1L) + limit, QQ(1L) + beyond, tiny,           QQ(1L, 3L),   QQ::infinity(),
               QQ::minusInfinity(), huge,      huge + tiny,     huge + QQ(1L), -huge,
               vast,           vast + tiny,    vast + beyond,   -vast};
  }

  SparseRow next(long n) {
    SparseRow row;
    std::uniform_int_distribution<long> entries(0, 4);
    std::uniform_int_distribution<long> index(1, n);
    std::uniform_int_distribution<std::size_t> value(0, values_.size() - 1);
    for (long e = entries(engine_); e > 0; --e) row.assign(index(engine_), values_[value(engine_)]);
    row.finish();
    return row;
  }

  std::mt19937& engine() { return engine_; }

 private:
  std::mt19937 engine_;
  std::vector<QQ> values_;
};

void expectSameRows(const std::vector<InequalityRow>& a, const std::vector<InequalityRow>& b) {
  ASSERT_EQ(a.size(), b.size());
  for (std::size_t i = 0; i < a.size(); ++i) {
    EXPECT_EQ(a[i].coefficients, b[i].coefficients) << i;
    EXPECT_EQ(a[i].lower, b[i].lower) << i;
    EXPECT_EQ(a[i].upper, b[i].upper) << i;
  }
}

TEST(InequalityPairingTest, IndexedPairingEqualsTheDirectSearchOnRandomSystems) {
  RandomRows rows(11);
  std::uniform_int_distribution<int> count(0, 12);
  for (int round = 0; round < 3000; ++round) {
    LpModel model;
    const long n = 1 + round % 3;
    // Many "<=" rows are copies of ">=" rows, possibly shifted within or beyond the tolerance.
    for (int i = count(rows.engine()); i > 0; --i) {
      model.greaterEqual.push_back({rows.next(n), QQ(i)});
    }
    for (int i = count(rows.engine()); i > 0; --i) {
      SparseRow row = rows.next(n);
      if (!model.greaterEqual.empty() && i % 2 == 0) {
        row = model.greaterEqual[static_cast<std::size_t>(i) % model.greaterEqual.size()]
                  .coefficients;
      }
      model.lessEqual.push_back({row, QQ(100 + i)});
    }
    expectSameRows(pairInequalities(model), pairInequalitiesDirectly(model));
    if (HasFailure()) FAIL() << "round " << round;
  }
}

TEST(InequalityPairingTest, SwapWithLastDecidesTheOrderOfTheRowsLeftOver) {
  // ">=": r1. "<=": a, r1, b, c. r1 pairs with "<=" 2; c moves into its place: a, c, b.
  const auto single = [](long index, long value) {
    SparseRow row;
    row.assign(index, QQ(value));
    row.finish();
    return row;
  };
  LpModel model;
  model.greaterEqual.push_back({single(1, 1), QQ(0L)});
  model.lessEqual.push_back({single(2, 1), QQ(10L)});
  model.lessEqual.push_back({single(1, 1), QQ(11L)});
  model.lessEqual.push_back({single(3, 1), QQ(12L)});
  model.lessEqual.push_back({single(4, 1), QQ(13L)});
  const std::vector<InequalityRow> merged = pairInequalities(model);
  ASSERT_EQ(merged.size(), 4u);
  EXPECT_EQ(toString(*merged[0].upper), "11");
  EXPECT_EQ(toString(*merged[1].upper), "10");
  EXPECT_EQ(toString(*merged[2].upper), "13");
  EXPECT_EQ(toString(*merged[3].upper), "12");
  for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(toString(*merged[i].lower), "-inf");
}

TEST(InequalityPairingTest, TwoGreaterRowsShareOneLessRow) {
  SparseRow row;
  row.assign(1, QQ(2L));
  row.finish();
  LpModel model;
  model.greaterEqual.push_back({row, QQ(1L)});
  model.greaterEqual.push_back({row, QQ(2L)});
  model.lessEqual.push_back({row, QQ(5L)});
  const std::vector<InequalityRow> merged = pairInequalities(model);
  ASSERT_EQ(merged.size(), 2u);
  EXPECT_EQ(toString(*merged[0].upper), "5");
  EXPECT_EQ(toString(*merged[1].upper), "inf");
}

}  // namespace
}  // namespace lpconv
