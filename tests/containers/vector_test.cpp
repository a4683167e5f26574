#include <lpconv/containers/vector.h>

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <climits>
#include <cstdlib>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "test_support.h"

namespace lpconv {
namespace {

using testing_support::contents;
using testing_support::failureRegex;
using testing_support::fill;
using testing_support::rest;

TEST(VectorLongTest, DefaultSettings) {
  const Vector<long> v;
  EXPECT_EQ(v.getDimension(), 0);
  EXPECT_EQ(v.getDelimiters(), " ");
  EXPECT_TRUE(v.getAllowComments());
  EXPECT_TRUE(v.getSecondFlag());
}

TEST(VectorLongTest, WrittenForm) {
  Vector<long> v;
  std::ostringstream empty;
  empty << v;
  EXPECT_EQ(empty.str(), "[ ]");
  fill(v, {1L, -3L, 0L, LONG_MIN});
  std::ostringstream out;
  v.serialize(out) << "|";
  EXPECT_EQ(out.str(), "[ 1 -3 0 -9223372036854775808 ]|");
}

TEST(VectorLongTest, ReadTable) {
  struct Case {
    std::string text;
    std::vector<long> values;
    std::string left;
  };
  const std::vector<Case> cases = {
      {"[ ]", {}, ""},
      {"[]", {}, ""},
      {"  \n[ ] x", {}, " x"},
      {"// note\n[ 1 -inf 2 ]", {1, 0, 2}, ""},  // inf of long is a never-set 0
      {"[ inf ]", {0}, ""},
      {"5", {}, "5"},  // no bracket: nothing read, nothing consumed
      {"  // c\n /* d */ 5", {}, "5"},
      {"", {}, ""},
      {"[ -5 ]", {-5}, ""},
      {"[ --5 ]", {5}, ""},  // the noted sign and the number's own sign combine
      {"[ +5 ]", {5}, ""},
      {"[1 2]", {1, 2}, ""},
      {"[1/*c*/2]", {1, 2}, ""},
      {"[ 1 // two\n 2 ]", {1, 2}, ""},
      {"[ 1\t2\r\n3 ]", {1, 2, 3}, ""},
      {"[ 1 ] [ 2 ]", {1}, " [ 2 ]"},
      {"/* a */ [ 7 ]rest", {7}, "rest"},
      {"[ 9223372036854775807 ]", {LONG_MAX}, ""},
      {"[ 7]", {7}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    Vector<long> v;
    fill(v, {8L, 9L});
    std::istringstream in(c.text);
    in >> v;
    EXPECT_EQ(contents(v), c.values);
    EXPECT_EQ(rest(in), c.left);
  }
}

TEST(VectorLongTest, ReadingAFailedStreamThrowsAndEmpties) {
  Vector<long> v;
  fill(v, {1L, 2L});
  std::istringstream in("[ 3 ]");
  in.setstate(std::ios::failbit);
  try {
    v.deserialize(in);
    ADD_FAILURE() << "no exception";
  } catch (const ReadException& e) {
    EXPECT_STREQ(e.what(), "Vector: bad stream");
  }
  EXPECT_EQ(v.getDimension(), 0);
}

TEST(VectorLongDeathTest, BadInputTable) {
  struct Case {
    std::string text, message;
  };
  const std::vector<Case> cases = {
      {"[ 1, 2 ]", "Vector: bad input"},
      {"[ ix ]", "Vector: bad input2"},
      {"[ inx ]", "Vector: bad input3"},
      {"[ -ix ]", "Vector: bad input2"},
      {"[ i", "Vector: bad input2"},
      {"[ in", "Vector: bad input3"},
      {"[ 1 2", "Vector: bad input"},
      {"[", "Vector: bad input"},
      {"[ - ]", "Vector: bad input"},
      {"[ x ]", "Vector: bad input"},
      {"[ 1 /x ]", "Vector: bad input"},  // a lone slash breaks the read-only stream
      {"[ -9223372036854775808 ]", "Vector: bad input"},  // the sign is taken off first
      {"[ 99999999999999999999 ]", "Vector: bad input"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EXIT(
        {
          Vector<long> v;
          std::istringstream in(c.text);
          in >> v;
        },
        ::testing::ExitedWithCode(1), failureRegex(c.message));
  }
}

// Every prefix of a sample either reads (the whole text, or one that stops before "[") or ends
// the process with one of the reader's messages; none may hang.
TEST(VectorLongDeathTest, TruncatedInputNeverHangs) {
  struct Sample {
    std::string text;
    long elements;
  };
  const std::vector<Sample> samples = {{"[ 1 -inf 2 ]", 3}, {"// c\n[ 3 /* x */ -4 ]", 2}};
  for (const auto& [text, elements] : samples) {
    const std::string::size_type open = text.find('[');
    for (std::string::size_type cut = 0; cut <= text.size(); ++cut) {
      const std::string piece = text.substr(0, cut);
      SCOPED_TRACE(piece);
      if (cut <= open || cut == text.size()) {
        Vector<long> v;
        std::istringstream in(piece);
        in >> v;
        EXPECT_EQ(v.getDimension(), cut == text.size() ? elements : 0);
      } else {
        EXPECT_EXIT(
            {
              Vector<long> v;
              std::istringstream in(piece);
              in >> v;
            },
            ::testing::ExitedWithCode(1), "^\n\\*\\*\\* FAIL: Vector: bad input[23]?\n$");
      }
    }
  }
}

TEST(VectorLongTest, GrowsInStepsOfAHundred) {
  std::string text = "[";
  for (int i = 1; i <= 150; ++i) text.append(" ").append(std::to_string(i));
  text += " ]";
  Vector<long> v;
  std::istringstream in(text);
  in >> v;
  ASSERT_EQ(v.getDimension(), 150);
  EXPECT_EQ(v.getCapacity(), 202);  // grown at element 1 (to 101) and at element 102
  EXPECT_EQ(v[150], 150);
}

TEST(VectorLongTest, SubtractInPlace) {
  Vector<long> a;
  Vector<long> b;
  fill(a, {5L, 7L, 0L});
  fill(b, {2L, 10L, -4L});
  a -= b;
  EXPECT_EQ(contents(a), (std::vector<long>{3, -3, 4}));
  EXPECT_EQ(contents(b), (std::vector<long>{2, 10, -4}));
  a -= a;
  EXPECT_EQ(contents(a), (std::vector<long>{0, 0, 0}));
  Vector<long> empty;
  Vector<long> other;
  empty -= other;
  EXPECT_EQ(empty.getDimension(), 0);
}

TEST(VectorLongDeathTest, SubtractDimensionMismatch) {
  Vector<long> a;
  Vector<long> b;
  fill(a, {1L, 2L});
  fill(b, {1L, 2L, 3L});
  EXPECT_EXIT(a -= b, ::testing::ExitedWithCode(1), failureRegex("Vector: dimension mismatch2"));
  Vector<long> empty;
  EXPECT_EXIT(empty -= a, ::testing::ExitedWithCode(1),
              failureRegex("Vector: dimension mismatch2"));
}

TEST(VectorLongTest, Equality) {
  Vector<long> a;
  Vector<long> b;
  fill(a, {1L, 2L});
  fill(b, {1L, 2L});
  EXPECT_TRUE(a == b);
  b[2] = 3;
  EXPECT_FALSE(a == b);
  EXPECT_TRUE(a != b);
  Vector<long> e1;
  Vector<long> e2;
  EXPECT_TRUE(e1 == e2);
}

TEST(VectorLongDeathTest, EqualityDimensionMismatch) {
  Vector<long> a;
  Vector<long> b;
  fill(a, {1L, 2L});
  fill(b, {1L, 2L, 3L});
  EXPECT_TRUE(a == a);  // the same object is never checked
  EXPECT_TRUE(b == b);
  EXPECT_EXIT(static_cast<void>(a == b), ::testing::ExitedWithCode(1),
              failureRegex("Vector: dimension mismatch9"));
}

TEST(VectorLongTest, RandomRoundTrips) {
  std::mt19937_64 random(77);
  // LONG_MIN cannot come back: the reader takes its sign off and the rest overflows.
  std::uniform_int_distribution<long> value(LONG_MIN + 1, LONG_MAX);
  for (int round = 0; round < 300; ++round) {
    Vector<long> a;
    const long n = static_cast<long>(random() % 20);
    a.resize(n, false);
    for (long i = 1; i <= n; ++i) a[i] = round % 2 == 0 ? value(random) % 100 : value(random);
    std::stringstream text;
    text << a << (round % 3 == 0 ? "\n" : " // trailing\n") << a;
    Vector<long> b;
    Vector<long> c;
    text >> b >> c;
    ASSERT_TRUE(a == b) << text.str();
    ASSERT_TRUE(a == c) << text.str();
  }
}

}  // namespace
}  // namespace lpconv

namespace lpconv {
namespace {

using testing_support::failureRegex;
using testing_support::texts;

Vector<QQ> qqVector(std::initializer_list<const char*> values) {
  Vector<QQ> v;
  v.resize(static_cast<long>(values.size()), false);
  long i = 1;
  for (const char* text : values) v[i++] = QQ(text);
  return v;
}

TEST(VectorQQTest, WrittenForm) {
  std::ostringstream out;
  out << Vector<QQ>() << "|" << qqVector({"1", "1/2", "-3", "7/2", "-7/2", "inf", "-inf", "0"});
  EXPECT_EQ(out.str(), "[ ]|[ 1 1/2 -3 3:1/2 -3:1/2 inf -inf 0 ]");
}

TEST(VectorQQTest, ReadTable) {
  struct Case {
    std::string text;
    std::vector<std::string> values;
    std::string left;
  };
  const std::vector<Case> cases = {
      {"// note\n[ 1 -inf 2 ]", {"1", "-inf", "2"}, ""},
      {"[ inf ]", {"inf"}, ""},
      {"[ -3:1/2 1/2 ]", {"-3:1/2", "1/2"}, ""},
      {"[ --5 ]", {"5"}, ""},
      {"[ -+5 ]", {"-5"}, ""},
      {"[ 1.25 6/4 ]", {"1:1/4", "1:1/2"}, ""},
      {"[1/3]", {"1/3"}, ""},
      {"[ ]", {}, ""},
      {"5", {}, "5"},
      {"[ 2 /* c */ 3 // d\n ] r", {"2", "3"}, " r"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    Vector<QQ> v = qqVector({"9", "9"});
    std::istringstream in(c.text);
    in >> v;
    EXPECT_EQ(texts(v), c.values);
    EXPECT_EQ(testing_support::rest(in), c.left);
  }
}

TEST(VectorQQDeathTest, BadInputTable) {
  struct Case {
    std::string text, message;
  };
  const std::vector<Case> cases = {
      {"[ ix ]", "Vector: bad input2"}, {"[ -inx ]", "Vector: bad input3"},
      {"[ 1 2", "Vector: bad input"},    // the stream fails while the last number is read
      {"[ 1, 2 ]", "QQ: parse error1"},  // the number reader takes the comma as a decimal point
      {"[ 1 x ]", "QQ: parse error1"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    EXPECT_EXIT(
        {
          Vector<QQ> v;
          std::istringstream in(c.text);
          in >> v;
        },
        ::testing::ExitedWithCode(1), failureRegex(c.message));
  }
}

// Every prefix ends: it reads, reports a failure, or throws the integer reader's
// std::invalid_argument (as for "1/" with its empty denominator); it never hangs.
TEST(VectorQQDeathTest, TruncatedInputNeverHangs) {
  const std::string text = "[ 1 -inf 3:1/2 -7/9 ]";
  for (std::string::size_type cut = 1; cut < text.size(); ++cut) {
    const std::string piece = text.substr(0, cut);
    SCOPED_TRACE(piece);
    EXPECT_EXIT(
        {
          Vector<QQ> v;
          std::istringstream in(piece);
          try {
            in >> v;
          } catch (const std::invalid_argument&) {
            std::exit(3);
          }
          std::exit(0);
        },
        [](int status) {
          return WIFEXITED(status) && (WEXITSTATUS(status) == 1 || WEXITSTATUS(status) == 3);
        },
        "^(|\n\\*\\*\\* FAIL: (Vector: bad input[23]?|QQ: [a-z ]+[0-9]?)\n)$");
  }
}

TEST(VectorQQTest, EqualityWithTolerance) {
  struct Case {
    const char* a;
    const char* b;
    bool equal;
  };
  const std::vector<Case> cases = {
      {"0", "1/1000000000", true},  // exactly the tolerance still counts as equal
      {"1/1000000000", "0", true},   {"0", "-1/1000000000", true},
      {"0", "1/999999999", false},   {"0", "1000000001/1000000000000000000", false},
      {"1", "1:1/1000000000", true}, {"-5", "-5:1/999999999", false},
      {"7/2", "3:1/2", true},        {"inf", "inf", true},
      {"-inf", "-inf", true},        {"inf", "-inf", false},
      {"-inf", "inf", false},        {"5", "inf", false},
      {"inf", "5", false},           {"-inf", "0", false},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.a) + " vs " + c.b);
    const Vector<QQ> a = qqVector({"1/3", c.a, "2"});
    const Vector<QQ> b = qqVector({"1/3", c.b, "2"});
    EXPECT_EQ(a == b, c.equal);
    EXPECT_EQ(b == a, c.equal);
  }
  EXPECT_EQ(toString(detail::vectorTolerance()), "1/1000000000");
}

TEST(VectorQQDeathTest, EqualityDimensionMismatch) {
  const Vector<QQ> a = qqVector({"1", "2"});
  const Vector<QQ> b = qqVector({"1", "2", "3"});
  const Vector<QQ> inf = qqVector({"inf"});
  EXPECT_TRUE(a == a);
  EXPECT_TRUE(inf == inf);
  EXPECT_EXIT(static_cast<void>(a == b), ::testing::ExitedWithCode(1),
              failureRegex("Vector: dimension mismatch9"));
  EXPECT_EXIT(static_cast<void>(Vector<QQ>() == a), ::testing::ExitedWithCode(1),
              failureRegex("Vector: dimension mismatch9"));
}

TEST(VectorQQTest, SubtractInPlace) {
  Vector<QQ> a = qqVector({"1/2", "inf", "-inf", "3"});
  a -= qqVector({"1/3", "5", "inf", "-1/4"});
  EXPECT_EQ(texts(a), (std::vector<std::string>{"1/6", "inf", "-inf", "3:1/4"}));
  Vector<QQ> self = qqVector({"1/2", "-3"});
  self -= self;
  EXPECT_EQ(texts(self), (std::vector<std::string>{"0", "0"}));
}

TEST(VectorQQDeathTest, SubtractFailures) {
  Vector<QQ> a = qqVector({"1", "inf"});
  EXPECT_EXIT(a -= qqVector({"1"}), ::testing::ExitedWithCode(1),
              failureRegex("Vector: dimension mismatch2"));
  EXPECT_EXIT(a -= qqVector({"1", "inf"}), ::testing::ExitedWithCode(1),
              failureRegex("INF - INF is not defined"));
  EXPECT_EXIT(a -= a, ::testing::ExitedWithCode(1), failureRegex("INF - INF is not defined"));
}

TEST(VectorQQTest, RandomRoundTrips) {
  std::mt19937_64 random(4242);
  for (int round = 0; round < 300; ++round) {
    Vector<QQ> a;
    const long n = static_cast<long>(random() % 15);
    a.resize(n, round % 2 == 0);
    for (long i = 1; i <= n; ++i) a[i] = testing_support::randomQQ(random);
    std::stringstream text;
    text << a << " /* between */ " << a;
    Vector<QQ> b;
    Vector<QQ> c = qqVector({"1"});
    text >> b >> c;
    ASSERT_EQ(texts(b), texts(a)) << text.str();
    ASSERT_EQ(texts(c), texts(a));
    ASSERT_TRUE(a == b);
  }
}

}  // namespace
}  // namespace lpconv
