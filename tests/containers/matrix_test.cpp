#include <lpconv/containers/matrix.h>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include "test_support.h"

namespace lpconv {
namespace {

using testing_support::contents;
using testing_support::failureRegex;
using testing_support::rest;

// Every row slot 0..rows has `columns` entries (after a resize or setZero to one row or more).
template <typename T>
void expectRowInvariant(const Matrix<T>& m) {
  if (m.getRows() < 1) return;
  for (long r = 0; r <= m.getRows(); ++r) {
    ASSERT_EQ(m.at(r).getDimension(), m.getColumns()) << "row slot " << r;
  }
}

std::vector<std::vector<long>> rowsOf(const Matrix<long>& m) {
  std::vector<std::vector<long>> out;
  for (long r = 1; r <= m.getRows(); ++r) out.push_back(contents(m[r]));
  return out;
}

TEST(MatrixTest, ConstructedEmpty) {
  const Matrix<long> m(",", false, false);
  EXPECT_EQ(m.getRows(), 0);
  EXPECT_EQ(m.getColumns(), 0);
  EXPECT_EQ(m.getDelimiters(), ", ");
  EXPECT_FALSE(m.getAllowComments());
  EXPECT_FALSE(m.isNonEmpty());
}

TEST(MatrixTest, ResizeKeepsEveryRowSlotAtTheColumnCount) {
  Matrix<long> m;
  m.resize(2, 3, false);
  expectRowInvariant(m);
  EXPECT_TRUE(m.isNonEmpty());
  m.resize(1, 4, false);
  EXPECT_EQ(m.getRows(), 1);
  EXPECT_EQ(m.getColumns(), 4);
  expectRowInvariant(m);
  EXPECT_TRUE(m.isNonEmpty());
  m.resize(0, 4, false);
  EXPECT_FALSE(m.isNonEmpty());
  m.resize(3, 0, false);
  EXPECT_FALSE(m.isNonEmpty());  // rows without columns
  expectRowInvariant(m);
  m.resize(5, true);  // the virtual form keeps the column count
  EXPECT_EQ(m.getColumns(), 0);
  m.resize(4, 2, true);
  m.resize(7, false);
  EXPECT_EQ(m.getColumns(), 2);
  expectRowInvariant(m);
}

TEST(MatrixTest, ClearThroughTheArrayKeepsColumns) {
  Matrix<long> m;
  m.setZero(2, 3);
  Array<Vector<long>>& rows = m;
  rows.clear();
  EXPECT_EQ(m.getRows(), 0);
  EXPECT_EQ(m.getColumns(), 3);
  m.release();
  EXPECT_EQ(m.getColumns(), 0);
  EXPECT_EQ(m.data(), nullptr);
}

TEST(MatrixDeathTest, NegativeSizes) {
  Matrix<long> m;
  EXPECT_EXIT(m.resize(-1, 0, false), ::testing::ExitedWithCode(1),
              failureRegex("Matrix: invalid size"));
  EXPECT_EXIT(m.resize(0, -1, false), ::testing::ExitedWithCode(1),
              failureRegex("Matrix: invalid size"));
  EXPECT_EXIT(m.resize(-1, true), ::testing::ExitedWithCode(1),
              failureRegex("Matrix: invalid size"));
  EXPECT_EXIT(m.setZero(-2, 3), ::testing::ExitedWithCode(1), failureRegex("Matrix: invalid size"));
  EXPECT_EXIT(m.setZero(2, -3), ::testing::ExitedWithCode(1), failureRegex("array: dimension < 0"));
}

TEST(MatrixDeathTest, RowIndexBoundaries) {
  Matrix<long> m;
  m.setZero(3, 2);
  EXPECT_EQ(m.at(0).getDimension(), 2);
  EXPECT_EQ(m.at(1).getDimension(), 2);
  EXPECT_EQ(m.at(3).getDimension(), 2);
  EXPECT_EXIT(m.at(4), ::testing::ExitedWithCode(1), failureRegex("Array: index out of range"));
  EXPECT_EXIT(m.at(-1), ::testing::ExitedWithCode(1), failureRegex("Array: index out of range"));
}

TEST(MatrixTest, SetZeroTable) {
  struct Case {
    long startRows, startColumns;  // resize first, filled with 7s
    long rows, cols;               // setZero arguments
    long expectedRows, expectedColumns;
  };
  const std::vector<Case> cases = {
      {0, 0, 0, 0, 0, 0},                      // nothing at all
      {0, 0, 2, 3, 2, 3}, {0, 0, 3, 0, 3, 3},  // square default
      {4, 5, 0, 2, 4, 2},                      // current row count
      {4, 5, 0, 0, 4, 4}, {4, 5, 2, 0, 2, 2},
      {2, 2, 5, 1, 5, 1}, {0, 0, 0, 6, 0, 6},  // no rows, but a column count
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.startRows << "x" << c.startColumns << " setZero("
                                      << c.rows << "," << c.cols << ")");
    Matrix<long> m(",", false, false);
    m.resize(c.startRows, c.startColumns, false);
    for (long r = 0; r <= c.startRows && m.data() != nullptr; ++r) {
      for (long j = 1; j <= c.startColumns; ++j) m[r][j] = 7;
      m[r] = m[r];  // self-assignment must not disturb a row
    }
    m.setZero(c.rows, c.cols);
    EXPECT_EQ(m.getRows(), c.expectedRows);
    EXPECT_EQ(m.getColumns(), c.expectedColumns);
    expectRowInvariant(m);
    for (long r = 1; r <= m.getRows(); ++r) {
      EXPECT_EQ(contents(m[r]), std::vector<long>(static_cast<size_t>(c.expectedColumns), 0));
      EXPECT_EQ(m[r].getDelimiters(), " ");
      EXPECT_TRUE(m[r].getAllowComments());
      EXPECT_TRUE(m[r].getSecondFlag());
    }
    EXPECT_EQ(m.getDelimiters(), ", ");  // the matrix keeps its own settings
  }
}

TEST(MatrixTest, RandomResizeSequencesKeepTheInvariant) {
  std::mt19937 random(5);
  Matrix<long> m;
  for (int step = 0; step < 500; ++step) {
    const long rows = static_cast<long>(random() % 8);
    const long cols = static_cast<long>(random() % 8);
    switch (random() % 3) {
      case 0:
        m.resize(rows, cols, random() % 2 == 0);
        break;
      case 1:
        m.setZero(rows, cols);
        break;
      default:
        m.resize(rows, random() % 2 == 0);
        break;
    }
    expectRowInvariant(m);
    if (HasFatalFailure()) return;
  }
}

TEST(MatrixTest, CopiesAreDeep) {
  Matrix<long> m;
  m.setZero(2, 2);
  m[1][1] = 5;
  Matrix<long> copy(m);
  copy[1][1] = 6;
  EXPECT_EQ(m[1][1], 5);
  EXPECT_EQ(copy.getColumns(), 2);
  Matrix<long> assigned;
  assigned = copy;
  EXPECT_EQ(rowsOf(assigned), (std::vector<std::vector<long>>{{6, 0}, {0, 0}}));
}

TEST(MatrixTest, WrittenForm) {
  Matrix<long> m(",", false, false);
  std::ostringstream empty;
  empty << m;
  EXPECT_EQ(empty.str(), "[\n]");
  m.setZero(2, 2);
  m[1][1] = 1;
  m[1][2] = 2;
  m[2][2] = -3;
  std::ostringstream out;
  m.serialize(out) << "|";
  EXPECT_EQ(out.str(), "[\n[ 1 2 ]\n[ 0 -3 ]\n]|");
  m.setZero(3, 0);
  std::ostringstream square;
  square << m;
  EXPECT_EQ(square.str(), "[\n[ 0 0 0 ]\n[ 0 0 0 ]\n[ 0 0 0 ]\n]");
}

// Counts flushes, to see that line ends are std::endl.
class CountingBuffer : public std::stringbuf {
 public:
  int syncs = 0;

 protected:
  int sync() override {
    ++syncs;
    return std::stringbuf::sync();
  }
};

TEST(MatrixTest, EveryLineEndFlushes) {
  Matrix<long> m;
  m.setZero(3, 1);
  CountingBuffer buffer;
  std::ostream out(&buffer);
  out << m;
  EXPECT_EQ(buffer.syncs, 4);  // after "[" and after each row
  EXPECT_EQ(buffer.str(), "[\n[ 0 ]\n[ 0 ]\n[ 0 ]\n]");
}

TEST(MatrixTest, ReadTable) {
  struct Case {
    std::string text;
    std::vector<std::vector<long>> rows;
    long columns;
    std::string left;
  };
  const std::vector<Case> cases = {
      {"[ ]", {}, 0, ""},
      {"[]", {}, 0, ""},
      {"[ [ ] [ ] ]", {}, 0, ""},
      {"[\n[ 1 2 ]\n[ 0 -3 ]\n]", {{1, 2}, {0, -3}}, 2, ""},
      {"[[1 2][3 4]]x", {{1, 2}, {3, 4}}, 2, "x"},
      {"[ [ 1 2 3 ] [ 4 5 ] ]", {{1, 2, 3}, {4, 5}}, 3, ""},  // a short last row stays short
      {"[ [ 1 2 3 ] [ 4 5 ] [ 6 7 8 ] ]", {{1, 2, 3}, {4, 5, 0}, {6, 7, 8}}, 3, ""},
      {"[ [ ] [ 1 2 ] ]", {{0, 0}, {1, 2}}, 2, ""},
      {"// head\n[ /* a */ [ 1 ] // b\n [ 2 ] ]", {{1}, {2}}, 1, ""},
      {"[ [ inf -inf ] ]", {{0, 0}}, 2, ""},
      {"5", {}, 0, "5"},
      {"", {}, 0, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    Matrix<long> m;
    m.setZero(4, 4);  // reading replaces everything
    m[1][1] = 9;
    std::istringstream in(c.text);
    in >> m;
    EXPECT_EQ(rowsOf(m), c.rows);
    EXPECT_EQ(m.getColumns(), c.columns);
    EXPECT_EQ(rest(in), c.left);
  }
}

TEST(MatrixDeathTest, BadInputTable) {
  struct Case {
    std::string text, message;
  };
  const std::vector<Case> cases = {
      {"[ [ 1 2 ] [ 3 4 5 ] ]", "Matrix row dimension mismatch"},
      {"[ 5 ]", "Matrix: bad input"},  // a row must start with "["
      {"[ [ 1 ] 5 ]", "Matrix: bad input"},
      {"[ [ 1 ]", "Matrix: bad input"},
      {"[", "Matrix: bad input"},
      {"[ [ 1 x ] ]", "Vector: bad input"},
      {"[ [ ix ] ]", "Vector: bad input2"},
      {"[ [ 1 ] /x ]", "Matrix: bad input"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EXIT(
        {
          Matrix<long> m;
          std::istringstream in(c.text);
          in >> m;
        },
        ::testing::ExitedWithCode(1), failureRegex(c.message));
  }
}

TEST(MatrixDeathTest, FailedStream) {
  Matrix<long> m;
  std::istringstream in("[ ]");
  in.setstate(std::ios::badbit);
  EXPECT_EXIT(in >> m, ::testing::ExitedWithCode(1), failureRegex("Matrix: bad stream"));
}

TEST(MatrixDeathTest, TruncatedInputNeverHangs) {
  const std::vector<std::string> samples = {"[\n[ 1 2 ]\n[ -3 inf ]\n]",
                                            " /* m */ [ [ ] [ 4 ] // r\n ]"};
  for (const std::string& text : samples) {
    const std::string::size_type open = text.find('[');
    for (std::string::size_type cut = 0; cut <= text.size(); ++cut) {
      const std::string piece = text.substr(0, cut);
      SCOPED_TRACE(piece);
      if (cut <= open || cut == text.size()) {
        Matrix<long> m;
        std::istringstream in(piece);
        in >> m;
        EXPECT_EQ(m.getRows(), cut == text.size() ? 2 : 0);
      } else {
        EXPECT_EXIT(
            {
              Matrix<long> m;
              std::istringstream in(piece);
              in >> m;
            },
            ::testing::ExitedWithCode(1),
            "^\n\\*\\*\\* FAIL: (Matrix: bad input|Vector: bad input[23]?)\n$");
      }
    }
  }
}

TEST(MatrixTest, RandomRoundTrips) {
  std::mt19937_64 random(99);
  for (int round = 0; round < 100; ++round) {
    Matrix<long> m(",", false, false);
    const long rows = static_cast<long>(random() % 6);
    const long cols = static_cast<long>(random() % 6) + 1;
    m.setZero(rows, cols);
    for (long r = 1; r <= rows; ++r) {
      for (long j = 1; j <= cols; ++j) m[r][j] = static_cast<long>(random() % 2001) - 1000;
    }
    std::stringstream text;
    text << m;
    Matrix<long> back;
    text >> back;
    ASSERT_EQ(rowsOf(back), rowsOf(m)) << text.str();
    ASSERT_EQ(back.getColumns(), rows == 0 ? 0 : cols);
  }
}

}  // namespace
}  // namespace lpconv

namespace lpconv {
namespace {

using testing_support::texts;

TEST(MatrixQQTest, WrittenFormIsExact) {
  Matrix<QQ> m(",", false, false);
  m.setZero(2, 2);
  m[1][1] = QQ(1L);
  m[1][2] = QQ(2L);
  m[2][2] = QQ("1/3");
  std::ostringstream out;
  out << m;
  EXPECT_EQ(out.str(), "[\n[ 1 2 ]\n[ 0 1/3 ]\n]");
  m.setZero(1, 3);
  m[1][1] = QQ(true);
  m[1][3] = QQ("-7/2");
  std::ostringstream again;
  again << m;
  EXPECT_EQ(again.str(), "[\n[ inf 0 -3:1/2 ]\n]");
}

TEST(MatrixQQTest, SetZeroClearsOldValues) {
  Matrix<QQ> m;
  m.setZero(2, 3);
  m[2][3] = QQ("5/7");
  m.at(0)[1] = QQ(true);
  m.setZero(2, 3);
  for (long r = 0; r <= 2; ++r) {
    EXPECT_EQ(texts(m.at(r)), (std::vector<std::string>{"0", "0", "0"})) << r;
  }
}

TEST(MatrixQQTest, ReadShortAndLongRows) {
  Matrix<QQ> m;
  std::istringstream in("[ [ 1/2 -inf 3 ] [ 4 ] ]");
  in >> m;
  ASSERT_EQ(m.getRows(), 2);
  EXPECT_EQ(m.getColumns(), 3);
  EXPECT_EQ(texts(m[1]), (std::vector<std::string>{"1/2", "-inf", "3"}));
  EXPECT_EQ(texts(m[2]), (std::vector<std::string>{"4"}));
}

TEST(MatrixQQTest, RandomRoundTrips) {
  std::mt19937_64 random(2718);
  for (int round = 0; round < 60; ++round) {
    Matrix<QQ> m(",", false, false);
    const long rows = static_cast<long>(random() % 5) + 1;
    const long cols = static_cast<long>(random() % 5) + 1;
    m.setZero(rows, cols);
    for (long r = 1; r <= rows; ++r) {
      for (long j = 1; j <= cols; ++j) m[r][j] = testing_support::randomQQ(random);
    }
    std::stringstream text;
    text << m;
    Matrix<QQ> back;
    text >> back;
    ASSERT_EQ(back.getRows(), rows) << text.str();
    ASSERT_EQ(back.getColumns(), cols);
    for (long r = 1; r <= rows; ++r) {
      ASSERT_EQ(texts(back[r]), texts(m[r])) << text.str();
      ASSERT_TRUE(back[r] == m[r]);
    }
  }
}

}  // namespace
}  // namespace lpconv
