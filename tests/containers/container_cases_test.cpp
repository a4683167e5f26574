// The containers' edge cases that caught real faults, one table per concern: checked access at the
// boundaries, growth and capacities, written forms, the reader quirks (above all of the array
// tokens, which the property test takes as given), matrix shapes, tolerant equality, subtraction
// and split. Failures are caught through throwFailure.

#include <climits>
#include <functional>
#include <new>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/serializable_array.h>
#include <lpconv/containers/split.h>
#include <lpconv/containers/vector.h>

#include "test_support.h"

namespace lpconv {
namespace {

using namespace testing_support;

template <typename Object>
std::string written(const Object& x) {
  std::ostringstream out;
  out << x;
  return out.str();
}

Vector<QQ> qq(std::initializer_list<const char*> values) {
  Vector<QQ> v;
  v.resize(static_cast<long>(values.size()), false);
  long i = 1;
  for (const char* text : values) v[i++] = QQ(text);
  return v;
}

TEST(ContainerCases, AtAcceptsZeroToDimensionOnly) {
  for (long n : {0L, 1L, 5L}) {
    Array<long> a;
    a.resize(n, false);
    a.at(0) = -1;  // passes the check even when nothing was allocated
    EXPECT_EQ(&a.at(n), &a[n]);
    const Array<long>& constant = a;
    for (long bad : {n + 1, -1L, LONG_MIN}) {
      EXPECT_EQ(failureOf([&] { (void)a.at(bad); }), messages::kArrayIndexOutOfRange) << n;
      EXPECT_EQ(failureOf([&] { (void)constant.at(bad); }), messages::kArrayIndexOutOfRange);
    }
  }
  const Array<std::string> empty;
  EXPECT_EQ(empty.at(0), "");
  EXPECT_EQ(empty.data(), nullptr);
}

TEST(ContainerCases, GrowthCapacitiesAndSlots) {
  Array<long> a;
  a.resize(5, true);
  const long* storage = a.data();
  a.resize(105, false);
  EXPECT_EQ(a.data(), storage);
  EXPECT_EQ(a.getCapacity(), 105);
  a.resize(106, false);
  EXPECT_EQ(a.getCapacity(), 106);
  EXPECT_THROW(a.resize(LONG_MAX, true), std::bad_array_new_length);
  EXPECT_THROW(a.resize(LONG_MAX - 100, false), std::bad_array_new_length);
  EXPECT_THROW(a.resize(1L << 62, false), std::bad_array_new_length);
  EXPECT_EQ(failureOf([&] { a.resize(-1, false); }), messages::kArrayDimensionNegative);
  EXPECT_EQ(a.getDimension(), 106);

  Array<long> plain;  // keeps reused slots; ConversionArray zeroes grown integral ones
  ConversionArray<long> zeroing;
  for (Array<long>* x : {&plain, static_cast<Array<long>*>(&zeroing)}) {
    x->resize(3, false);
    for (long i = 0; i <= 3; ++i) (*x)[i] = i + 1;
    x->resize(1, false);
    x->resize(3, false);  // through the virtual slot
  }
  EXPECT_EQ(describeSlots(plain), "dim 3 cap 3 {1 2 3 4 }");
  EXPECT_EQ(describeSlots(zeroing), "dim 3 cap 3 {1 2 0 0 }");
  plain.resize(1, false);
  plain.resize(5, true);  // copies slots 0..1 only
  EXPECT_EQ(describeSlots(plain), "dim 5 cap 105 {1 2 0 0 0 0 }");
  ConversionArray<std::string> strings;  // class elements are left as they are
  strings.resize(2, true);
  strings[2] = "kept";
  strings.clear();
  strings.resize(2, false);
  EXPECT_EQ(strings[2], "kept");
  EXPECT_EQ(strings.getCapacity(), 102);
  strings.release();
  EXPECT_EQ(strings.data(), nullptr);

  strings.resize(3, true);
  strings[3] = "three";
  Array<std::string> copy(strings);
  EXPECT_EQ(copy.getCapacity(), 3);  // a copy's capacity is the source's dimension
  const Array<std::string>& alias = copy;
  copy = alias;
  copy[3] = "changed";
  EXPECT_EQ(strings[3], "three");
  const std::string* kept = strings.data();
  static_cast<Array<std::string>&>(strings) = copy;  // fits: storage reused
  EXPECT_EQ(strings.data(), kept);
  EXPECT_EQ(contents(strings), (std::vector<std::string>{"", "", "changed"}));
}

template <typename T>
SerializableArray<T> array(const std::string& delimiters, std::initializer_list<T> values) {
  SerializableArray<T> a(delimiters, false, false);
  a.resize(static_cast<long>(values.size()), false);
  long i = 1;
  for (const T& v : values) a[i++] = v;
  return a;
}

TEST(ContainerCases, WrittenFormsAndSettings) {
  Vector<long> longs;
  longs.resize(3, false);
  longs[1] = -3, longs[3] = LONG_MIN;
  Matrix<long> m(",", false, false);
  const std::string empty = written(m);
  m.setZero(2, 2);
  m[1][1] = 1, m[2][2] = -3;
  const std::pair<std::string, std::string> cases[] = {
      {written(longs), "[ -3 0 -9223372036854775808 ]"},
      {written(Vector<QQ>()), "[ ]"},
      {written(qq({"1/2", "7/2", "-7/2", "inf", "-inf"})), "[ 1/2 3:1/2 -3:1/2 inf -inf ]"},
      {empty, "[\n]"},
      {written(m), "[\n[ 1 0 ]\n[ 0 -3 ]\n]"},
      {written(array<long>("\n", {})), "[\n]"},
      {written(array<long>("\n", {1, -2})), "[\n1\n-2\n]"},
      {written(array<long>(", ", {1, 2})), "[ 1,2 ]"},
      {written(array<long>(",-", {-1, 2})), "[ \\-1,2 ]"},  // later delimiters are escaped
      {written(array<long>("-,", {-1, -2})), "[ -1--2 ]"},  // the first never is
      {written(array<long>(" 1", {11, 2})), "[ \\1\\1 2 ]"},
      {written(array<QQ>(",:", {QQ("7/2"), QQ(false)})), "[ 3\\:1/2,-inf ]"},
      {array<long>("", {}).getDelimiters(), " "},  // the delimiters always hold a blank
      {array<long>(",", {}).getDelimiters(), ", "},
      {array<long>("\n", {}).getDelimiters(), "\n "},
      {array<long>(" ,", {}).getDelimiters(), " ,"}};
  for (const auto& [actual, expected] : cases) EXPECT_EQ(actual, expected);

  struct Counting : std::stringbuf {
    int syncs = 0;
    int sync() override { return ++syncs, std::stringbuf::sync(); }
  } buffer;
  std::ostream out(&buffer);
  const Serializable& base = m;  // the stream operators reach the virtual writer
  out << base;
  EXPECT_EQ(buffer.syncs, 3);  // every line end is std::endl

  SerializableArray<long> b(";", false, true);
  b = SerializableArray<long>(",", true, false);
  EXPECT_TRUE(b.getDelimiters() == ", " && b.getAllowComments() && !b.getSecondFlag());
  const Vector<long> v;
  EXPECT_TRUE(v.getDelimiters() == " " && v.getAllowComments() && v.getSecondFlag());
}

// Reads text into a copy of x: its written form (with the column count of a matrix) or the
// failure, and the unread rest.
template <typename Object>
std::string readBack(Object x, const std::string& text) {
  std::istringstream in(text);
  std::string result = failureOf([&] { in >> x; });
  if (!result.empty()) return result + "|" + rest(in);
  result = written(x);
  if constexpr (std::is_same_v<Object, Matrix<long>>)
    result += " " + std::to_string(x.getColumns());
  return result + "|" + rest(in);
}

using Read = std::function<std::string(const std::string&)>;
template <typename Object>
Read reader(Object x) {
  return [x](const std::string& text) { return readBack(x, text); };
}

TEST(ContainerCases, ReaderQuirks) {
  const Read blank = reader(SerializableArray<long>(" ", false, false));
  const Read comments = reader(SerializableArray<long>(" ", true, false));
  const Read comma = reader(SerializableArray<long>(",", false, false));
  const Read qqComma = reader(SerializableArray<QQ>(",", false, false));
  const Read escaping = reader(SerializableArray<QQ>(",:", false, false));
  const Read lines = reader(SerializableArray<long>("\n", false, false));
  const Read longs = reader(Vector<long>());
  const Read rationals = reader(qq({"9"}));
  const Read matrix = reader(Matrix<long>());
  const std::tuple<const Read&, std::string, std::string> cases[] = {
      {comments, "[1 2]", "[ 12 ]|"},     // with comments nothing but "]" ends a token
      {blank, "[ 1  2 ]", "[ 1 0 2 ]|"},  // an empty token between two blanks
      {blank, " \t\r\n[ 5 ] tail", "[ 5 ]| tail"},
      {blank, "[ 1 \\] 2 ]", "[ 1 0 2 ]|"},  // an escaped bracket ends nothing
      {blank, "[ x ] [ 12x ]", "[ 0 ]| [ 12x ]"},
      {blank, "[ 12x 99999999999999999999 ]", "[ 12 9223372036854775807 ]|"},
      {blank, "// c\n[ 1 ]", std::string(messages::kSerializableArrayNoStart) + "|// c\n[ 1 ]"},
      {comma, "[,1]", "[ 1 ]|"},  // one leading delimiter is skipped
      {comma, "[,,1]", "[ 0,1 ]|"},
      {qqComma, "[ 1,,2 ]", "QQ: parse error1|2 ]"},
      {escaping, "[ 3\\:1/2,-inf ]", "[ 3\\:1/2,-inf ]|"},  // the written forms read back
      {lines, "[\n1\n-2\n]", "[\n1\n-2\n]|"},
      {longs, "5", "[ ]|5"},  // no bracket: nothing read, nothing consumed
      {longs, "[ 1 -inf inf ] [ 2 ]", "[ 1 0 0 ]| [ 2 ]"},  // inf of long is a never-set 0
      {longs, "[ ix ]", std::string(messages::kVectorBadInput2) + "|x ]"},
      {longs, "[ inx ]", std::string(messages::kVectorBadInput3) + "|x ]"},
      {rationals, "[ -+5 1.25 6/4 ]", "[ -5 1:1/4 1:1/2 ]|"},
      {rationals, "[ 1, 2 ]", "QQ: parse error1| 2 ]"},
      {matrix, "[ [ 1 2 ] [ 3 4 5 ] ]", std::string(messages::kMatrixRowDimensionMismatch) + "| ]"},
      {matrix, "[ [ 1 2 3 ] [ 4 5 ] ]", "[\n[ 1 2 3 ]\n[ 4 5 ]\n] 3|"},  // a short last row
      {matrix, "[ [ 1 2 3 ] [ 4 5 ] [ 6 ] ]", "[\n[ 1 2 3 ]\n[ 4 5 0 ]\n[ 6 ]\n] 3|"},
      {matrix, "[ [ ] [ ] ]x", "[\n] 0|x"},
      {matrix, "[ 5 ]", std::string(messages::kMatrixBadInput) + "|5 ]"}};
  for (const auto& [read, text, expected] : cases) EXPECT_EQ(read(text), expected) << text;

  Vector<long> v;
  std::istringstream failed("[ 3 ]");
  failed.setstate(std::ios::failbit);
  try {
    failed >> v;
    ADD_FAILURE() << "no exception";
  } catch (const ReadException& e) {
    EXPECT_STREQ(e.what(), messages::kVectorBadStream);
  }
}

// Every row slot 0..rows has the column count after a resize; setZero zeroes them all and gives
// rows the default settings, whatever came before.
TEST(ContainerCases, MatrixShapes) {
  struct Case {
    long startRows, startColumns, rows, cols, expectedRows, expectedColumns;
  };
  const Case cases[] = {{0, 0, 0, 0, 0, 0}, {0, 0, 2, 3, 2, 3}, {0, 0, 3, 0, 3, 3},
                        {4, 5, 0, 2, 4, 2}, {4, 5, 0, 0, 4, 4}, {4, 5, 2, 0, 2, 2},
                        {2, 2, 5, 1, 5, 1}, {0, 0, 0, 6, 0, 6}};
  for (const Case& c : cases) {
    Matrix<QQ> m(",", false, false);
    m.resize(c.startRows, c.startColumns, false);
    for (long r = 0; r <= c.startRows && m.data() != nullptr; ++r) {
      for (long j = 1; j <= c.startColumns; ++j) m[r][j] = QQ(true);
      const Vector<QQ>& row = m[r];
      m[r] = row;  // self-assignment must not disturb a row
    }
    for (long r = 0; c.startRows > 0 && r <= c.startRows; ++r) {
      EXPECT_EQ(m.at(r).getDimension(), c.startColumns);  // row slot 0 too
    }
    m.setZero(c.rows, c.cols);
    EXPECT_EQ(m.getRows(), c.expectedRows);
    EXPECT_EQ(m.getColumns(), c.expectedColumns);
    for (long r = m.getRows() > 0 ? 0 : 1; r <= m.getRows(); ++r) {
      std::string zeros = "[";
      for (long j = 0; j < c.expectedColumns; ++j) zeros += " 0";
      EXPECT_EQ(written(m.at(r)), zeros + " ]");
      EXPECT_EQ(m.at(r).getDelimiters(), " ");
    }
    EXPECT_EQ(m.getDelimiters(), ", ");
  }
  Matrix<long> m;
  m.setZero(2, 3);
  m.resize(4, true);  // the virtual form keeps the columns
  EXPECT_EQ(m.at(4).getDimension(), 3);
  static_cast<Array<Vector<long>>&>(m).clear();
  EXPECT_EQ(m.getColumns(), 3);
  m.release();
  EXPECT_EQ(m.getColumns(), 0);
  EXPECT_EQ(failureOf([&] { m.resize(-1, true); }), messages::kMatrixInvalidSize);
  EXPECT_EQ(failureOf([&] { m.setZero(-2, 3); }), messages::kMatrixInvalidSize);
  EXPECT_EQ(failureOf([&] { m.setZero(2, -3); }), messages::kArrayDimensionNegative);
}

// Equality within the tolerance, and subtraction in place.
TEST(ContainerCases, VectorArithmetic) {
  const std::tuple<const char*, const char*, bool> cases[] = {
      // exactly the tolerance still counts as equal
      {"0", "1/1000000000", true},   {"0", "-1/1000000000", true},
      {"0", "1/999999999", false},   {"0", "1000000001/1000000000000000000", false},
      {"1", "1:1/1000000000", true}, {"-5", "-5:1/999999999", false},
      {"inf", "inf", true},          {"-inf", "-inf", true},
      {"inf", "-inf", false},        {"5", "inf", false},
      {"-inf", "0", false}};
  for (const auto& [x, y, equal] : cases) {
    const Vector<QQ> a = qq({"1/3", x, "2"});
    const Vector<QQ> b = qq({"1/3", y, "2"});
    EXPECT_EQ(a == b, equal) << x << " vs " << y;
    EXPECT_EQ(b == a, equal) << x << " vs " << y;
  }
  const Vector<QQ> infinite = qq({"inf", "2"});
  const Vector<QQ>& self = infinite;
  EXPECT_TRUE(infinite == self);  // the same object is never checked
  EXPECT_EQ(failureOf([&] { (void)(self == qq({"inf"})); }), messages::kVectorDimensionMismatch9);
  Vector<long> x;
  x.resize(2, false);
  Vector<long> y = x;
  y[2] = 1;
  EXPECT_TRUE(x != y);  // longs compare exactly

  Vector<QQ> a = qq({"1/2", "inf", "-inf", "3"});
  a -= qq({"1/3", "5", "inf", "-1/4"});
  EXPECT_EQ(written(a), "[ 1/6 inf -inf 3:1/4 ]");
  Vector<long> longs;
  longs.resize(2, false);
  longs[1] = 5, longs[2] = LONG_MIN + 1;
  Vector<long>& alias = longs;
  longs -= alias;
  EXPECT_EQ(written(longs), "[ 0 0 ]");
  EXPECT_EQ(failureOf([&] { a -= qq({"1"}); }), messages::kVectorDimensionMismatch2);
  EXPECT_EQ(failureOf([&] { Vector<long>() -= longs; }), messages::kVectorDimensionMismatch2);
  EXPECT_EQ(failureOf([&] { a -= qq({"0", "inf", "0", "0"}); }), "INF - INF is not defined");
}

TEST(ContainerCases, Split) {
  const std::tuple<const char*, char, const char*> cases[] = {{"a,,b,", ',', "[a][][b]"},
                                                              {"", ',', ""},
                                                              {",", ',', "[]"},
                                                              {",,", ',', "[][]"},
                                                              {",a", ',', "[][a]"},
                                                              {"a,b", ';', "[a,b]"},
                                                              {"x1 x2  x3", ' ', "[x1][x2][][x3]"},
                                                              {"line\n", '\n', "[line]"}};
  for (const auto& [text, delimiter, pieces] : cases) {
    std::string joined;
    for (const String& piece : contents(split(text, delimiter))) joined += "[" + piece + "]";
    EXPECT_EQ(joined, pieces) << text;
  }
}

}  // namespace
}  // namespace lpconv
