// The readers against the literal algorithm: one resize per element (and, for matrices, the full
// resize before every row), with every failure turned into an exception by throwFailure. Random
// texts, valid and hostile, are read both ways into containers with a random history; elements,
// dimension, capacity, rows, settings, stream state, what is left unread and every failure must
// agree.

#include <climits>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/serializable_array.h>
#include <lpconv/containers/vector.h>

#include "test_support.h"

namespace lpconv {
namespace {

using namespace testing_support;

const std::string kWhite = " \t\r\n";

long wrapNegate(long x) { return static_cast<long>(0UL - static_cast<unsigned long>(x)); }
QQ wrapNegate(const QQ& x) { return -x; }

template <typename T>
void literalVector(std::istream& is, Vector<T>& v) {
  v.resize(0, true);
  if (is.fail()) throw ReadException(messages::kVectorBadStream);
  char c = 0;
  skipDelimitersAndComments(is, kWhite, &c);
  if (!peekChar(is, c) || c != '[') return;
  is.get();
  skipDelimitersAndComments(is, kWhite, &c);
  if (peekChar(is, c) && c == ']') {
    is.get();
    return;
  }
  for (;;) {
    v.resize(v.getDimension() + 1, true);
    T& element = v[v.getDimension()];
    peekChar(is, c);
    const bool negative = c == '-';
    if (negative) is.get(), peekChar(is, c);
    if (c != 'i') {
      is >> element;
      if (is.fail()) reportFailure(messages::kVectorBadInput);
    } else {
      is.get();
      if (!peekChar(is, c) || c != 'n') reportFailure(messages::kVectorBadInput2);
      is.get();
      if (!peekChar(is, c) || c != 'f') reportFailure(messages::kVectorBadInput3);
      is.get();
      element = detail::infinityValue<T>();
    }
    if (negative) element = wrapNegate(element);
    skipDelimitersAndComments(is, kWhite, &c);
    if (peekChar(is, c) && c == ']') {
      is.get();
      return;
    }
  }
}

template <typename T>
void literalMatrix(std::istream& is, Matrix<T>& m) {
  for (long r = 0; m.data() != nullptr && r <= m.getRows(); ++r) m.at(r).resize(0, true);
  m.ConversionArray<Vector<T>>::resize(0, true);
  m.resize(0, 0, true);
  if (is.fail()) reportFailure(messages::kMatrixBadStream);
  char c = 0;
  skipDelimitersAndComments(is, kWhite, &c);
  if (!peekChar(is, c) || c != '[') return;
  is.get();
  skipDelimitersAndComments(is, kWhite, &c);
  long columns = 0;
  if (peekChar(is, c) && c == ']') {
    is.get();
  } else {
    for (long r = 1;; ++r) {
      m.resize(r, columns, true);
      skipDelimitersAndComments(is, kWhite, &c);
      if (!peekChar(is, c) || c != '[') reportFailure(messages::kMatrixBadInput);
      literalVector(is, m.at(r));
      if (is.fail()) reportFailure(messages::kMatrixBadInput);
      const long d = m.at(r).getDimension();
      if (d > columns) {
        if (columns != 0) reportFailure(messages::kMatrixRowDimensionMismatch);
        columns = d;
        m.resize(r, d, true);
      }
      skipDelimitersAndComments(is, kWhite, &c);
      if (peekChar(is, c) && c == ']') {
        is.get();
        break;
      }
    }
  }
  if (columns == 0) m.resize(0, 0, true);
}

// The token reading is the production one; only the growth is literal here.
template <typename T>
void literalArray(std::istream& is, SerializableArray<T>& a) {
  SerializableArray<T> tokens(a.getDelimiters(), a.getAllowComments(), a.getSecondFlag());
  is >> tokens;
  a.clear();
  for (long i = 1; i <= tokens.getDimension(); ++i) {
    a.resize(a.getDimension() + 1, false);
    a[a.getDimension()] = tokens[i];
  }
}

// Everything observable after a read: the outcome, the stream, and the object when it succeeded.
template <typename Object, typename Reader>
std::string outcome(Object& x, const std::string& text, Reader read, bool withFailedStream) {
  std::stringstream is(text);
  if (withFailedStream) is.setstate(std::ios::failbit);
  std::string result;
  try {
    read(is, x);
    result = "ok " + describeSlots(x);
    if constexpr (std::is_base_of_v<Matrix<QQ>, Object> ||
                  std::is_base_of_v<Matrix<long>, Object>) {
      result += " cols " + std::to_string(x.getColumns());
    }
  } catch (const FailureException& e) {
    result = std::string("failure ") + e.what();
  } catch (const ReadException& e) {
    result = std::string("read exception ") + e.what();
  } catch (const std::invalid_argument& e) {
    result = std::string("invalid argument ") + e.what();
  }
  return result + " | state " + std::to_string(is.rdstate()) + " | rest " + rest(is);
}

// Random texts: mostly well-formed brackets with elements, comments and blanks, cut at a random
// place or sprinkled with hostile pieces.
// Rows of a matrix text have the common width or, now and then, fewer entries.
std::string randomText(std::mt19937_64& random, int depth, long width = -1) {
  const bool outer = width < 0;
  static const std::vector<std::string> kElements = {"0",
                                                     "1",
                                                     "-1",
                                                     "42",
                                                     "--5",
                                                     "+7",
                                                     "-0",
                                                     "inf",
                                                     "-inf",
                                                     "1/2",
                                                     "-3:1/2",
                                                     "0.5",
                                                     "1,5",
                                                     "007",
                                                     "123456789012345678",
                                                     "1234567890123456789",
                                                     "99999999999999999999",
                                                     "9223372036854775807",
                                                     "-9223372036854775808",
                                                     "--9223372036854775808",
                                                     "1e5",
                                                     "2:1/3"};
  static const std::vector<std::string> kHostile = {
      "i",  "in",  "ix", "inx", "x",   ",",   "/",  "/*",     "*/", "//", "\\",   "-",
      "--", "- 5", "[",  "]",   "1/0", "1.0", ".5", "1:01/2", "\v", "\f", "0x10", "\xff"};
  static const std::vector<std::string> kGaps = {" ",    "  ",      "\n",     "\t",
                                                 "\r\n", "/* c */", "// c\n", ""};
  auto pick = [&](const std::vector<std::string>& from) { return from[random() % from.size()]; };
  std::string text = pick(kGaps) + "[" + pick(kGaps);
  long count = random() % 4 == 0 ? static_cast<long>(random() % 400) : random() % 6;
  if (!outer) count = random() % 4 == 0 ? static_cast<long>(random() % (width + 1)) : width;
  const long rowWidth = random() % 4 == 0 ? static_cast<long>(random() % 150) : random() % 6;
  for (long i = 0; i < count; ++i) {
    if (depth > 0) {
      text += randomText(random, depth - 1, rowWidth);
    } else {
      text += random() % 200 == 0 ? pick(kHostile) : pick(kElements);
    }
    text += random() % 10 == 0 ? pick(kGaps) : " ";
  }
  text += "]";
  if (!outer) return text;
  text += pick(kGaps) + "tail";
  if (random() % 3 == 0) text.resize(random() % (text.size() + 1));
  return text;
}

// A container with a history: earlier contents and spare capacity the reader must respect.
template <typename Object>
void giveHistory(Object& x, std::mt19937_64& random) {
  switch (random() % 4) {
    case 0:
      break;
    case 1:
      x.resize(static_cast<long>(random() % 300), random() % 2 == 0);
      break;
    default:
      x.resize(static_cast<long>(random() % 5) + 1, true);
      for (long i = 1; i <= x.getDimension(); ++i) x[i] = static_cast<long>(random() % 9) + 1;
      x.resize(static_cast<long>(random() % 3), false);
  }
}

template <typename T>
void giveHistory(Matrix<T>& m, std::mt19937_64& random) {
  if (random() % 2 == 0) return;
  m.resize(static_cast<long>(random() % 120), static_cast<long>(random() % 6), random() % 2 == 0);
  for (long r = 1; r <= m.getRows(); ++r) {
    for (long j = 1; j <= m.getColumns(); ++j) m.at(r)[j] = static_cast<long>(r + j);
  }
  m.resize(static_cast<long>(random() % 3), m.getColumns(), false);
}

class ReaderProperty : public ::testing::Test {
 protected:
  void SetUp() override { previous = setFailureHandler(throwFailure); }
  void TearDown() override { setFailureHandler(previous); }

  template <typename Object, typename Literal>
  void compareOnRandomTexts(int depth, int rounds, Literal literal,
                            const char* delimiters = nullptr) {
    std::mt19937_64 random(20261123);
    for (int round = 0; round < rounds; ++round) {
      const std::string text = randomText(random, depth);
      const bool failed = random() % 50 == 0;
      const std::uint64_t seed = random();
      std::mt19937_64 history1(seed);
      std::mt19937_64 history2(seed);
      Object fast;
      if constexpr (std::is_constructible_v<Object, const char*, bool>) {
        fast = Object(delimiters, random() % 2 == 0);
      }
      Object slow = fast;
      giveHistory(fast, history1);
      giveHistory(slow, history2);
      const std::string expected = outcome(slow, text, literal, failed);
      const std::string actual = outcome(
          fast, text, [](std::istream& is, Object& x) { is >> x; }, failed);
      ASSERT_EQ(expected, actual) << "text: " << text;
      // A failed read leaves a usable object: it reads the next text like a fresh one.
      std::istringstream again(depth == 0 ? "[ 7 ]" : "[ [ 7 ] ]");
      again >> fast;
      ASSERT_EQ(fast.getDimension(), 1);
    }
  }

  FailureHandler previous = nullptr;
};

TEST_F(ReaderProperty, VectorOfRationals) {
  compareOnRandomTexts<Vector<QQ>>(0, 1500, literalVector<QQ>);
}

TEST_F(ReaderProperty, VectorOfLongs) {
  compareOnRandomTexts<Vector<long>>(0, 1500, literalVector<long>);
}

TEST_F(ReaderProperty, MatrixOfRationals) {
  compareOnRandomTexts<Matrix<QQ>>(1, 300, literalMatrix<QQ>);
}

TEST_F(ReaderProperty, SerializableArrays) {
  compareOnRandomTexts<SerializableArray<long>>(0, 800, literalArray<long>, " ");
  compareOnRandomTexts<SerializableArray<QQ>>(0, 800, literalArray<QQ>, ", ");
}

}  // namespace
}  // namespace lpconv
