#include <lpconv/containers/serializable_array.h>

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "test_support.h"

namespace lpconv {
namespace {

using testing_support::contents;
using testing_support::failureRegex;
using testing_support::rest;

TEST(SerializableTest, DelimitersAlwaysHoldABlank) {
  struct Case {
    std::string given, stored;
  };
  const std::vector<Case> cases = {
      {"", " "}, {",", ", "}, {", ", ", "}, {" ,", " ,"}, {"\n", "\n "}, {";:", ";: "},
  };
  for (const Case& c : cases) {
    const SerializableArray<long> a(c.given, false, true);
    EXPECT_EQ(a.getDelimiters(), c.stored) << "[" << c.given << "]";
    EXPECT_FALSE(a.getAllowComments());
    EXPECT_TRUE(a.getSecondFlag());
  }
}

TEST(SerializableTest, AssignmentCopiesSettingsAndElements) {
  SerializableArray<long> a(",", true, false);
  testing_support::fill(a, {4L, 5L});
  SerializableArray<long> b(";", false, true);
  b = a;
  EXPECT_EQ(b.getDelimiters(), ", ");
  EXPECT_TRUE(b.getAllowComments());
  EXPECT_FALSE(b.getSecondFlag());
  EXPECT_EQ(contents(b), (std::vector<long>{4, 5}));
}

TEST(SerializableTest, StreamOperatorsReachTheVirtualFunctions) {
  SerializableArray<long> a(",", false, false);
  testing_support::fill(a, {1L, 2L});
  const Serializable& base = a;
  std::ostringstream out;
  out << base << "|" << base;  // returns the stream for chaining
  EXPECT_EQ(out.str(), "[ 1,2 ]|[ 1,2 ]");

  std::istringstream in("[ 7,8 ] [ 9 ]");
  Serializable& target = a;
  in >> target;
  EXPECT_EQ(contents(a), (std::vector<long>{7, 8}));
  EXPECT_EQ(rest(in), " [ 9 ]");
}

TEST(SerializableArrayTest, WrittenForms) {
  struct Case {
    std::string delimiters;
    std::vector<long> values;
    std::string text;
  };
  const std::vector<Case> cases = {
      {" ", {}, "[ ]"},
      {"\n", {}, "[\n]"},
      {",", {}, "[ ]"},
      {", ", {1, 2, 3}, "[ 1,2,3 ]"},
      {" ", {10, 20}, "[ 10 20 ]"},
      {"\n", {1, -2}, "[\n1\n-2\n]"},
      {";", {-5}, "[ -5 ]"},
      {",-", {-1, 2}, "[ \\-1,2 ]"},  // a later delimiter inside an element is escaped
      {"-,", {-1, -2}, "[ -1--2 ]"},  // the first delimiter never is
      {"1 ", {11, 21}, "[ 11121 ]"},  // nor digits that happen to be the separator
      {" 1", {11, 2}, "[ \\1\\1 2 ]"},
  };
  for (const Case& c : cases) {
    SerializableArray<long> a(c.delimiters, false, false);
    a.resize(static_cast<long>(c.values.size()), false);
    for (long i = 1; i <= a.getDimension(); ++i) a[i] = c.values[static_cast<size_t>(i - 1)];
    std::ostringstream out;
    a.serialize(out);
    EXPECT_EQ(out.str(), c.text) << "[" << c.delimiters << "]";
  }
}

TEST(SerializableArrayTest, ReadTable) {
  struct Case {
    std::string text;
    std::string delimiters;
    bool allowComments;
    std::vector<long> values;
    std::string left;
  };
  const std::vector<Case> cases = {
      {"[1 2]", " ", false, {1, 2}, ""},
      {"[ 1 2 ]", " ", false, {1, 2}, ""},
      {"[ 1  2 ]", " ", false, {1, 0, 2}, ""},  // empty token between two blanks
      {"[1 2]", " ", true, {12}, ""},           // with comments nothing ends a token
      {"[ 1 /* c */ 2 ]", " ", true, {12}, ""},
      {"[ 10,20 ]", ", ", false, {10, 20}, ""},
      {"[ 1,,2 ]", ",", false, {1, 0, 2}, ""},
      {"[,1]", ",", false, {1}, ""},  // one leading delimiter is skipped
      {"[,,1]", ",", false, {0, 1}, ""},
      {"[ ]", " ", false, {}, ""},
      {"[]", " ", false, {}, ""},
      {"[  ]", " ", false, {}, ""},
      {" \t\r\n[ 5 ] tail", " ", false, {5}, " tail"},
      {"[ \\-1,2 ]", ",-", false, {-1, 2}, ""},
      {"[ x ]", " ", false, {0}, ""},              // unreadable element text reads as 0
      {"[ 1 \\] 2 ]", " ", false, {1, 0, 2}, ""},  // an escaped bracket ends nothing
      {"[\n1\n-2\n]", "\n", false, {1, -2}, ""},
      {"[ 12x ]", " ", false, {12}, ""},
      {"[ 99999999999999999999 ]", " ", false, {LONG_MAX}, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    SerializableArray<long> a(c.delimiters, c.allowComments, false);
    testing_support::fill(a, {42L, 43L, 44L, 45L});  // reading replaces old contents
    std::istringstream in(c.text);
    a.deserialize(in);
    EXPECT_EQ(contents(a), c.values);
    EXPECT_EQ(rest(in), c.left);
    EXPECT_FALSE(in.fail());
  }
}

TEST(SerializableArrayDeathTest, NoOpeningBracket) {
  for (const std::string text : {"x[1]", "", "   ", "\n 5", "// c\n[ 1 ]"}) {
    SCOPED_TRACE(text);
    EXPECT_EXIT(
        {
          SerializableArray<long> a;
          std::istringstream in(text);
          a.deserialize(in);
        },
        ::testing::ExitedWithCode(1), failureRegex("SerializableArray: no start found"));
  }
}

TEST(SerializableArrayTest, TruncatedInputStopsAtEveryCut) {
  struct Sample {
    std::string text, delimiters;
    bool allowComments;
  };
  const std::vector<Sample> samples = {
      {"[ 10,-20,30 ]", ", ", false},
      {"  [ 1  2 \\3 ]", " ", false},
      {"[ 1 /* x */ 2 // y\n ]", " ", true},
      {"[\n4\n5\n]", "\n", false},
  };
  for (const Sample& s : samples) {
    SerializableArray<long> whole(s.delimiters, s.allowComments, false);
    std::istringstream all(s.text);
    whole.deserialize(all);
    EXPECT_FALSE(all.fail()) << s.text;
    const std::string::size_type open = s.text.find('[');
    for (std::string::size_type cut = open + 1; cut < s.text.size(); ++cut) {
      const std::string piece = s.text.substr(0, cut);
      SCOPED_TRACE(piece);
      SerializableArray<long> a(s.delimiters, s.allowComments, false);
      std::istringstream in(piece);
      a.deserialize(in);
      EXPECT_TRUE(in.fail());
      EXPECT_LE(a.getDimension(), whole.getDimension());
    }
  }
}

TEST(SerializableArrayTest, TruncatedInputKeepsTheTokensRead) {
  SerializableArray<long> a(",", false, false);
  std::istringstream in("[ 10,20,3");
  a.deserialize(in);
  EXPECT_EQ(contents(a), (std::vector<long>{10, 20, 3}));
  EXPECT_TRUE(in.fail());
}

TEST(SerializableArrayTest, RandomRoundTrips) {
  std::mt19937_64 random(20240611);
  // Sets whose first character never occurs in a number; later ones may ("-" gets escaped).
  const std::vector<std::string> delimiterSets = {" ", ", ", ";", "\n", ",-", "\t", ":-1", "x"};
  std::uniform_int_distribution<long> anyValue(LONG_MIN, LONG_MAX);
  std::uniform_int_distribution<long> smallValue(-1000, 1000);
  for (int round = 0; round < 400; ++round) {
    const std::string& delimiters =
        delimiterSets[static_cast<size_t>(round) % delimiterSets.size()];
    SerializableArray<long> a(delimiters, false, round % 3 == 0);
    const long n = static_cast<long>(random() % 12);
    a.resize(n, round % 2 == 0);
    for (long i = 1; i <= n; ++i) a[i] = round % 4 == 0 ? smallValue(random) : anyValue(random);
    std::ostringstream out;
    out << a;
    SerializableArray<long> b(delimiters, false, false);
    std::istringstream in(out.str() + "rest");
    in >> b;
    ASSERT_EQ(contents(b), contents(a)) << out.str();
    ASSERT_EQ(rest(in), "rest");
  }
}

}  // namespace
}  // namespace lpconv

namespace lpconv {
namespace {

using testing_support::texts;

TEST(SerializableArrayQQTest, WrittenFormEscapesLaterDelimiters) {
  SerializableArray<QQ> a(",:", false, false);
  a.resize(3, false);
  a[1] = QQ("7/2");
  a[2] = QQ("-1/2");
  a[3] = QQ(false);
  std::ostringstream out;
  out << a;
  EXPECT_EQ(out.str(), "[ 3\\:1/2,-1/2,-inf ]");
  SerializableArray<QQ> back(",:", false, false);
  std::istringstream in(out.str());
  in >> back;
  EXPECT_EQ(texts(back), (std::vector<std::string>{"3:1/2", "-1/2", "-inf"}));
}

TEST(SerializableArrayQQDeathTest, EmptyTokenIsANumberReaderFailure) {
  EXPECT_EXIT(
      {
        SerializableArray<QQ> a(",", false, false);
        std::istringstream in("[ 1,,2 ]");
        in >> a;
      },
      ::testing::ExitedWithCode(1), testing_support::failureRegex("QQ: parse error1"));
}

TEST(SerializableArrayQQTest, RandomRoundTrips) {
  std::mt19937_64 random(31337);
  const std::vector<std::string> delimiterSets = {" ", ", ", ";", "\n", ";:/-", "\t"};
  for (int round = 0; round < 200; ++round) {
    const std::string& delimiters =
        delimiterSets[static_cast<size_t>(round) % delimiterSets.size()];
    SerializableArray<QQ> a(delimiters, false, false);
    const long n = static_cast<long>(random() % 10);
    a.resize(n, false);
    for (long i = 1; i <= n; ++i) a[i] = testing_support::randomQQ(random);
    std::ostringstream out;
    out << a;
    SerializableArray<QQ> b(delimiters, false, false);
    std::istringstream in(out.str());
    in >> b;
    ASSERT_EQ(texts(b), texts(a)) << out.str();
  }
}

}  // namespace
}  // namespace lpconv
