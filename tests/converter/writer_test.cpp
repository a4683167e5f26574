// The output buffer, the sparse rows and the pairing order: table-driven, with the exact bytes.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/containers/vector.h>
#include <lpconv/converter/inequality_pairing.h>
#include <lpconv/converter/opt_writer.h>

namespace lpconv {
namespace {

// What write(out) leaves in a fresh scratch file.
template <typename Write>
std::string writtenBy(Write write) {
  std::FILE* file = std::tmpfile();
  {
    OutputBuffer out(fileno(file));
    write(out);
    out.flush();
  }
  std::string bytes;
  std::rewind(file);
  for (int c; (c = std::fgetc(file)) != EOF;) bytes.push_back(static_cast<char>(c));
  std::fclose(file);
  return bytes;
}

std::string repeated(const std::string& item, long count) {
  std::string out;
  for (long i = 0; i < count; ++i) out += item;
  return out;
}

TEST(OutputBufferTest, RepeatedItemsAreWrittenExactly) {
  // Each call: (item, count). Items that share a prefix or a block size must not share a block.
  const std::vector<std::vector<std::pair<std::string, long>>> cases = {
      {{"aab", 200}, {"aabaaba", 100}},
      {{"0 ", 3}, {"0 ", 300000}, {"inf ", 2}, {"0 ", 1}},
      {{"ab", 131072}, {"abab", 65536}, {"ab", 1}},
      {{"x", 0}, {"", 5}, {"y", -3}, {"z", 1}},
      {{std::string(300000, 'q'), 2}},  // an item longer than a whole block
  };
  for (const auto& calls : cases) {
    std::string expected;
    for (const auto& [item, count] : calls) expected += repeated(item, count) + "|";
    const std::string got = writtenBy([&](OutputBuffer& out) {
      for (const auto& [item, count] : calls) {
        out.putRepeated(item, count);
        out.put("|");
      }
    });
    EXPECT_EQ(got, expected) << calls.front().first.substr(0, 10);
  }
}

TEST(OutputBufferTest, ValuesAndTextsKeepTheirOrderAcrossFlushes) {
  const std::vector<Coefficient> values = {
      Coefficient(), Coefficient(-42L), Coefficient(QQ(-7L, 2L)), Coefficient(QQ::minusInfinity()),
      Coefficient(QQ(std::string(5000, '7')))};
  std::string expected;
  const std::string got = writtenBy([&](OutputBuffer& out) {
    for (int round = 0; round < 400; ++round) {  // several MB: many flushes and pieces
      for (const Coefficient& v : values) {
        out.put(v);
        out.put(" ");
        expected += toString(v) + " ";
      }
      out.putRepeated("0 ", 700);
      expected += repeated("0 ", 700);
    }
  });
  EXPECT_EQ(got, expected);
  EXPECT_EQ(toString(values[2]), "-3:1/2");
}

TEST(OutputBufferTest, AFailedWriteShowsAfterTheFlush) {
  const int readOnly = ::open("/dev/null", O_RDONLY);
  for (const int items : {1, 3000}) {  // written in place, and by the writer thread
    OutputBuffer out(readOnly);
    for (int i = 0; i < items; ++i) {
      out.put("y");
      out.putRepeated("0 ", 1000);
    }
    out.flush();
    EXPECT_TRUE(out.failed()) << items;
  }
  ::close(readOnly);
}

std::string textOf(const SparseRow& row) {
  std::string out;
  for (const RowEntry& e : row.entries())
    out += std::to_string(e.index) + ":" + toString(e.value) + " ";
  return out;
}

SparseRow rowOf(const std::vector<std::pair<long, QQ>>& assignments) {
  SparseRow row;
  for (const auto& [index, value] : assignments) row.assign(index, value);
  row.finish();
  return row;
}

TEST(SparseRowTest, FinishSubtractAndCompare) {
  const QQ tiny(1L, 10000000000L);
  struct Case {
    std::vector<std::pair<long, QQ>> a, b;
    std::string finished, difference;
    bool nearlyEqual;
  };
  const std::vector<Case> cases = {
      {{{3, QQ(1L)}, {1, QQ(2L)}, {3, QQ(5L)}}, {}, "1:2 3:5 ", "1:2 3:5 ", false},  // last wins
      {{{2, QQ(0L)}, {1, QQ(4L)}}, {{1, QQ(4L)}}, "1:4 ", "", true},  // zeros dropped
      {{{1, QQ(1L)}, {2, QQ(1L)}}, {{2, QQ(1L)}, {3, QQ(2L)}}, "1:1 2:1 ", "1:1 3:-2 ", false},
      {{{1, QQ(1L) + tiny}}, {{1, QQ(1L)}}, "1:1:1/10000000000 ", "1:1/10000000000 ", true},
      {{{1, QQ(1L, 1000000000L)}}, {}, "1:1/1000000000 ", "1:1/1000000000 ", true},
      {{{1, QQ(11L, 10000000000L)}}, {}, "1:11/10000000000 ", "1:11/10000000000 ", false},
      {{{1, QQ::infinity()}}, {{1, QQ::infinity()}}, "1:inf ", "", true},
      {{{1, QQ(1L)}}, {{2, QQ::minusInfinity()}}, "1:1 ", "1:1 2:inf ", false},
  };
  for (const Case& c : cases) {
    SparseRow a = rowOf(c.a);
    const SparseRow b = rowOf(c.b);
    EXPECT_EQ(textOf(a), c.finished);
    EXPECT_EQ(equalWithinTolerance(a, b), c.nearlyEqual) << c.finished;
    EXPECT_EQ(equalWithinTolerance(b, a), c.nearlyEqual) << c.finished;
    EXPECT_TRUE(a == rowOf(c.a));
    if (c.a.front().second.isInf && !c.b.empty() && c.b.front().first == 1) continue;
    a.subtract(b);
    EXPECT_EQ(textOf(a), c.difference) << c.finished;
  }
}

// The fast writer against the vector's own text: rows long enough for the repeated-block path,
// short rows and empty ones.
TEST(OutputBufferTest, DenseRowEqualsTheVectorText) {
  std::mt19937 engine(7);
  const std::vector<QQ> values = {QQ(3L), QQ(-5L, 7L), QQ::infinity(), QQ(0L)};
  for (const long n : {0L, 1L, 5L, 200000L}) {
    for (int round = 0; round < (n > 1000 ? 3 : 20); ++round) {
      std::vector<std::pair<long, QQ>> assignments;
      for (int e = n == 0 ? 0 : static_cast<int>(engine() % 5); e > 0; --e) {
        assignments.emplace_back(1 + engine() % n, values[engine() % values.size()]);
      }
      const SparseRow row = rowOf(assignments);
      Vector<QQ> dense;
      dense.resize(n, false);
      for (long k = 1; k <= n; ++k) dense[k] = QQ();
      for (const RowEntry& e : row.entries()) dense[e.index] = e.value.toQQ();
      std::ostringstream expected;
      expected << dense;
      EXPECT_EQ(writtenBy([&](OutputBuffer& out) { writeDenseRow(out, row, n); }), expected.str());
    }
  }
}

TEST(PairingTest, SwapWithLastAndSharedRows) {
  const auto single = [](long index) { return rowOf({{index, QQ(1L)}}); };
  Constraints model;
  // ">=": r1, r1. "<=": a, r1, b, c. The first r1 takes "<=" 2 and c moves into its place; the
  // second r1 finds none.
  model.greaterEqual = {{single(1), QQ(0L)}, {single(1), QQ(1L)}};
  model.lessEqual = {
      {single(2), QQ(10L)}, {single(1), QQ(11L)}, {single(3), QQ(12L)}, {single(4), QQ(13L)}};
  std::string got;
  for (const InequalityRow& row : pairInequalities(model)) {
    got += textOf(*row.coefficients) + toString(*row.lower) + ".." + toString(*row.upper) + " ";
  }
  EXPECT_EQ(got, "1:1 0..11 1:1 1..inf 2:1 -inf..10 4:1 -inf..13 3:1 -inf..12 ");
}

}  // namespace
}  // namespace lpconv
