#include <lpconv/converter/opt_writer.h>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/vector.h>
#include <lpconv/converter/inequality_pairing.h>
#include "temp_file.h"

namespace lpconv {
namespace {

class RandomValues {
 public:
  explicit RandomValues(unsigned seed) : engine_(seed) {}

  QQ value() {
    std::uniform_int_distribution<long> pick(-40, 40);
    const long v = pick(engine_);
    if (v == 40) return QQ::infinity();
    if (v == -40) return QQ::minusInfinity();
    if (v % 3 == 0) return QQ(v, 7L);
    return QQ(v);
  }

  SparseRow row(long n) {
    SparseRow row;
    std::uniform_int_distribution<long> index(1, n);
    std::uniform_int_distribution<int> count(0, 6);
    for (int i = count(engine_); i > 0; --i) row.assign(index(engine_), value());
    row.finish();
    return row;
  }

  std::mt19937& engine() { return engine_; }

 private:
  std::mt19937 engine_;
};

Vector<QQ> denseOf(const SparseRow& row, long n) {
  Vector<QQ> dense;
  dense.resize(n, false);
  for (long k = 1; k <= n; ++k) dense[k] = QQ();
  for (const RowEntry& e : row.entries()) dense[e.index] = e.value.toQQ();
  return dense;
}

template <typename Item>
std::string textOf(const Item& item) {
  std::ostringstream out;
  out << item;
  return out.str();
}

// Runs of zeros long enough to take the repeated-block path, short rows and empty ones.
TEST(OptWriterTest, StreamedRowsEqualTheVectorText) {
  RandomValues values(3);
  testing::TempFile file;
  for (const long n : {0L, 1L, 2L, 5L, 40L, 200000L}) {
    for (int round = 0; round < 20; ++round) {
      const SparseRow row = values.row(std::max(n, 1L));
      if (n == 0 && !row.empty()) continue;
      file.write("");
      {
        OutputBuffer out(file.fd());
        writeDenseRow(out, row, n);
      }
      ASSERT_EQ(file.contents(), textOf(denseOf(row, n))) << n;
    }
  }
}

// The whole file against the containers' own text for the same values.
TEST(OptWriterTest, WholeFileEqualsTheContainersText) {
  RandomValues values(5);
  testing::TempFile file;
  for (int round = 0; round < 60; ++round) {
    LpModel model;
    const long n = round % 7;
    model.variables = n;
    std::uniform_int_distribution<int> count(0, 3);
    model.hasObjective = round % 3 != 0;
    model.minimise = round % 2 == 0;
    if (model.hasObjective && n > 0) model.objective = values.row(n);
    if (n > 0) {
      for (int i = count(values.engine()); i > 0; --i) {
        model.equations.push_back({values.row(n), values.value()});
      }
      for (int i = count(values.engine()); i > 0; --i) {
        model.greaterEqual.push_back({values.row(n), values.value()});
        model.lessEqual.push_back({values.row(n), values.value()});
      }
      for (long k = 1; k <= n; k += 2) model.bounds.at(k) = {values.value(), values.value()};
    }
    const std::vector<InequalityRow> inequalities = pairInequalities(model);

    std::ostringstream expected;
    Vector<QQ> sense;
    Matrix<QQ> objective(",", false, false);
    if (model.hasObjective) {
      sense.resize(1, false);
      sense[1] = model.minimise ? QQ::minusInfinity() : QQ::infinity();
      objective.setZero(1, n);
      objective[1] = denseOf(model.objective, n);
    }
    expected << sense << "\n" << objective << "\n\n";

    Matrix<QQ> equations(",", false, false);
    Vector<QQ> equationRhs;
    equationRhs.resize(static_cast<long>(model.equations.size()), false);
    if (!model.equations.empty()) equations.setZero(static_cast<long>(model.equations.size()), n);
    for (std::size_t i = 0; i < model.equations.size(); ++i) {
      equations[static_cast<long>(i) + 1] = denseOf(model.equations[i].coefficients, n);
      equationRhs[static_cast<long>(i) + 1] = model.equations[i].rhs;
    }
    expected << equations << "\n" << equationRhs << "\n[ ]\n\n";

    Matrix<QQ> inequalityRows(",", false, false);
    Vector<QQ> lower;
    Vector<QQ> upper;
    const long r = static_cast<long>(inequalities.size());
    lower.resize(r, false);
    upper.resize(r, false);
    if (r > 0) inequalityRows.setZero(r, n);
    for (long i = 1; i <= r; ++i) {
      const InequalityRow& row = inequalities[static_cast<std::size_t>(i - 1)];
      inequalityRows[i] = denseOf(*row.coefficients, n);
      lower[i] = *row.lower;
      upper[i] = *row.upper;
    }
    expected << inequalityRows << "\n" << lower << "\n" << upper << "\n\n";

    Vector<long> integers;
    integers.resize(n, false);
    Vector<QQ> lowerBounds;
    Vector<QQ> upperBounds;
    lowerBounds.resize(n, false);
    upperBounds.resize(n, false);
    for (long k = 1; k <= n; ++k) lowerBounds[k] = upperBounds[k] = QQ::infinity();
    for (const auto& [k, pair] : model.bounds.stated()) {
      lowerBounds[k] = pair.lower;
      upperBounds[k] = pair.upper;
    }
    expected << integers << "\n" << lowerBounds << "\n" << upperBounds << "\n";

    file.write("");
    {
      OutputBuffer out(file.fd());
      writeOptFile(out, model, inequalities);
    }
    ASSERT_EQ(file.contents(), expected.str()) << "round " << round;
  }
}

}  // namespace
}  // namespace lpconv
