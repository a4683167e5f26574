// With throwFailure installed every container failure unwinds: the message is the reported text,
// the objects involved stay destructible (the sanitizers watch), and a later read into the same
// object works. Hostile texts end in a value or a failure, never in a hang.

#include <climits>
#include <functional>
#include <new>
#include <sstream>
#include <stdexcept>
#include <string>

#include <lpconv/containers/matrix.h>
#include <lpconv/containers/serializable_array.h>
#include <lpconv/containers/vector.h>

#include "test_support.h"

namespace lpconv {
namespace {

using namespace testing_support;

struct Objects {
  Vector<QQ> rationals;
  Vector<long> longs;
  Matrix<QQ> matrix;
  SerializableArray<long> array;
};

template <typename Object>
void read(Object& x, const std::string& text) {
  std::istringstream is(text);
  is >> x;
}

struct FailureCase {
  const char* message;
  std::function<void(Objects&)> operation;
};

const FailureCase kFailureCases[] = {
    {messages::kArrayDimensionNegative, [](Objects& o) { o.rationals.resize(-1, false); }},
    {messages::kArrayIndexOutOfRange, [](Objects& o) { o.longs.at(o.longs.getDimension() + 1); }},
    {messages::kArrayIndexOutOfRange, [](Objects& o) { o.matrix.at(-1); }},
    {messages::kSerializableArrayNoStart, [](Objects& o) { read(o.array, "x[1]"); }},
    {messages::kVectorBadInput, [](Objects& o) { read(o.longs, "[ 1, 2 ]"); }},
    {messages::kVectorBadInput, [](Objects& o) { read(o.longs, "[ 1 2"); }},
    {messages::kVectorBadInput2, [](Objects& o) { read(o.longs, "[ 1 ix ]"); }},
    {messages::kVectorBadInput3, [](Objects& o) { read(o.rationals, "[ 1 -inx ]"); }},
    {messages::kVectorDimensionMismatch2, [](Objects& o) { o.rationals -= Vector<QQ>(); }},
    {messages::kVectorDimensionMismatch9, [](Objects& o) { (void)(o.rationals == Vector<QQ>()); }},
    {"INF - INF is not defined",
     [](Objects& o) {
       read(o.rationals, "[ inf ]");
       o.rationals -= o.rationals;
     }},
    {"QQ: division by zero1", [](Objects& o) { read(o.matrix, "[ [ 1 ] [ 1/0 ] ]"); }},
    {messages::kMatrixInvalidSize, [](Objects& o) { o.matrix.resize(-1, 0, false); }},
    {messages::kMatrixInvalidSize, [](Objects& o) { o.matrix.resize(0, -1, false); }},
    {messages::kMatrixBadInput, [](Objects& o) { read(o.matrix, "[ [ 1 ] x ]"); }},
    {messages::kMatrixBadInput, [](Objects& o) { read(o.matrix, "[ [ 1 2 ]"); }},
    {messages::kMatrixRowDimensionMismatch,
     [](Objects& o) { read(o.matrix, "[ [ 1 2 ] [ 3 4 5 ] ]"); }},
    {messages::kMatrixBadStream,
     [](Objects& o) {
       std::istringstream is("[ ]");
       is.setstate(std::ios::failbit);
       is >> o.matrix;
     }},
};

// Objects filled beyond one growth step, so that a failure meets storage worth losing.
void fillObjects(Objects& o) {
  std::string row = "[";
  for (int i = 0; i < 150; ++i) row += " " + std::to_string(i) + "/7";
  row += " ]";
  read(o.rationals, row);
  read(o.longs, "[ 1 2 3 ]");
  read(o.matrix, "[ " + row + " " + row + " ]");
  read(o.array, "[ 4 5 ]");
}

TEST(FailurePath, EveryContainerFailureUnwindsAndLeavesUsableObjects) {
  for (const FailureCase& c : kFailureCases) {
    Objects o;
    fillObjects(o);
    EXPECT_EQ(failureOf([&] { c.operation(o); }), c.message);
    fillObjects(o);
    EXPECT_EQ(o.rationals.getDimension(), 150) << c.message;
    EXPECT_EQ(o.matrix.getRows(), 2) << c.message;
    EXPECT_EQ(toString(o.matrix.at(2)[150]), "21:2/7") << c.message;
  }
}

// The default path stays the contract: the frame on standard error and status 1.
TEST(FailurePathDeathTest, DefaultReportEndsTheProcess) {
  Vector<QQ> v;
  EXPECT_EXIT(read(v, "[ 1 ix ]"), ::testing::ExitedWithCode(1),
              failureRegex(messages::kVectorBadInput2));
  EXPECT_EXIT(Matrix<QQ>().resize(0, -1, false), ::testing::ExitedWithCode(1),
              failureRegex(messages::kMatrixInvalidSize));
}

TEST(FailurePath, ExtremeSizesAndIntegers) {
  ConversionArray<QQ> rationals;
  EXPECT_THROW(rationals.resize(LONG_MAX / 4, false), std::bad_array_new_length);
  EXPECT_THROW(rationals.resize(LONG_MAX, true), std::bad_array_new_length);
  Array<std::string> strings;
  EXPECT_THROW(strings.resize(1L << 62, false), std::bad_array_new_length);
  Matrix<QQ> matrix;
  EXPECT_THROW(matrix.resize(LONG_MAX / 8, 1, false), std::bad_array_new_length);
  EXPECT_EQ(rationals.getCapacity(), 0);
  Vector<long> v;
  read(v, "[ --9223372036854775808 -9223372036854775807 9223372036854775807 ]");
  EXPECT_EQ(testing_support::contents(v), (std::vector<long>{LONG_MIN, LONG_MIN + 1, LONG_MAX}));
}

// Each hostile text, 200,000 characters long, ends in the given outcome.
TEST(FailurePath, HostileTextsEnd) {
  const std::string many(200000, '-');
  const std::string escapes(200000, '\\');
  const auto outcome = failureOf;
  Vector<QQ> q;
  Vector<long> l;
  Matrix<QQ> m;
  SerializableArray<long> a;
  EXPECT_EQ(outcome([&] { read(q, "[ 1 /* never closed" + many); }), "QQ: parse error1");
  EXPECT_EQ(outcome([&] { read(l, "[ 1 /* never closed" + many); }), messages::kVectorBadInput);
  EXPECT_EQ(outcome([&] { read(q, "[ " + many + "5 ]"); }), "mpz_set_str");
  EXPECT_EQ(outcome([&] { read(l, "[ " + many + "5 ]"); }), messages::kVectorBadInput);
  EXPECT_EQ(outcome([&] { read(m, "[ [ 1 ] // " + many); }), messages::kMatrixBadInput);
  EXPECT_EQ(outcome([&] { read(m, "[ [ 1" + many); }), "mpz_set_str");
  EXPECT_EQ(outcome([&] { read(a, "[ 1 " + escapes); }), "");
  EXPECT_EQ(outcome([&] { read(a, "[ 1 2 " + escapes + "]"); }), "");
}

}  // namespace
}  // namespace lpconv
