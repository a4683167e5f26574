#include <lpconv/util/stream_helpers.h>

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>
#include <string>
#include <vector>

namespace lpconv {
namespace {

// What is left in the buffer, whatever state the stream is in.
std::string rest(std::istream& is) {
  return std::string(std::istreambuf_iterator<char>(is.rdbuf()), std::istreambuf_iterator<char>());
}

constexpr char endValue = static_cast<char>(255);

TEST(PeekCharTest, PeeksWithoutConsumingAndReportsTheEnd) {
  std::istringstream in("ab");
  char c = 0;
  EXPECT_TRUE(peekChar(in, c));
  EXPECT_EQ(c, 'a');
  EXPECT_TRUE(peekChar(in, c));
  EXPECT_EQ(c, 'a');
  in.get();
  in.get();
  EXPECT_FALSE(peekChar(in, c));
  EXPECT_EQ(c, endValue);
}

TEST(PeekCharTest, LiteralByte255CountsAsTheEnd) {
  std::istringstream in(std::string(1, endValue) + "x");
  char c = 0;
  EXPECT_FALSE(peekChar(in, c));
  EXPECT_EQ(rest(in), std::string(1, endValue) + "x");
}

TEST(PeekCharTest, FailedStreamReadsAsTheEnd) {
  std::istringstream in("abc");
  in.setstate(std::ios::failbit);
  char c = 0;
  EXPECT_FALSE(peekChar(in, c));
}

TEST(SkipCommentTest, Table) {
  struct Case {
    std::string input;
    bool result;
    std::string left;  // what remains in the buffer
    char c;            // the stored character
  };
  const std::vector<Case> cases = {
      {"x", false, "x", 'x'},
      {"", false, "", endValue},
      {"// note\n5", true, "\n5", '\n'},
      {"//", true, "", endValue},
      {"// to the end", true, "", endValue},
      {"/* a */7", true, "7", '7'},
      {"/**/7", true, "7", '7'},
      {"/* a ** b **/ 7", true, " 7", ' '},
      {"/*/ still inside */x", true, "x", 'x'},
      {"/* never closed", true, "", endValue},
      {"/* ends with star *", true, "", endValue},
      {"/* two */ /* comments */", true, " /* comments */", ' '},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.input);
    std::istringstream in(k.input);
    char c = 0;
    EXPECT_EQ(skipComment(in, c), k.result);
    EXPECT_EQ(c, k.c);
    EXPECT_EQ(rest(in), k.left);
  }
}

TEST(SkipCommentTest, LoneSlashOnReadOnlyStreamBreaksTheStream) {
  // The character after the slash is put back in place of the slash; a read-only buffer refuses.
  std::istringstream in("/x1");
  char c = 0;
  EXPECT_FALSE(skipComment(in, c));
  EXPECT_EQ(c, 'x');
  EXPECT_TRUE(in.bad());
  EXPECT_EQ(rest(in), "x1");
}

TEST(SkipCommentTest, LoneSlashOnReadWriteStreamDoublesTheNextCharacter) {
  std::stringstream in("/x1");
  char c = 0;
  EXPECT_FALSE(skipComment(in, c));
  EXPECT_FALSE(in.fail());
  EXPECT_EQ(rest(in), "xx1");
}

TEST(SkipCommentTest, LoneSlashAtTheEndDoesNotHang) {
  std::istringstream in("/");
  char c = 0;
  EXPECT_FALSE(skipComment(in, c));
  EXPECT_FALSE(peekChar(in, c));
}

TEST(SkipDelimitersTest, Table) {
  struct Case {
    std::string input;
    std::string set;
    bool all;
    bool result;
    std::string left;
    char c;
  };
  const std::vector<Case> cases = {
      {"  \t x", " \t", true, false, "x", 'x'}, {"x", " ", true, false, "x", 'x'},
      {"   ", " ", true, false, "", endValue},  {"", " ", true, false, "", endValue},
      {",, x", ", ", true, false, "x", 'x'},    {"  x", " ", false, true, " x", ' '},
      {"x ", " ", false, false, "x ", 'x'},     {"", " ", false, false, "", endValue},
      {",x", ",", false, true, "x", ','},       {"\n x", " ", true, false, "\n x", '\n'},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.input + "|" + k.set + (k.all ? "|all" : "|one"));
    std::istringstream in(k.input);
    char c = 0;
    EXPECT_EQ(skipDelimiters(in, k.set, k.all, c), k.result);
    EXPECT_EQ(c, k.c);
    EXPECT_EQ(rest(in), k.left);
  }
}

TEST(SkipDelimitersAndCommentsTest, Table) {
  struct Case {
    std::string input;
    std::string left;
    char c;
  };
  const std::string ws = " \t\r\n";
  const std::vector<Case> cases = {
      {"", "", endValue},
      {"x", "x", 'x'},
      {" \t\r\n x", "x", 'x'},
      {"// note\n[ 1 ]", "[ 1 ]", '['},
      {"  /* a */ // b\n /* c */\t]", "]", ']'},
      {"// only a comment", "", endValue},
      {" /* open", "", endValue},
      {" 5 // after", "5 // after", '5'},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.input);
    std::istringstream in(k.input);
    char c = 0;
    EXPECT_FALSE(skipDelimitersAndComments(in, ws, &c));
    EXPECT_EQ(c, k.c);
    EXPECT_EQ(rest(in), k.left);
  }
}

TEST(SkipDelimitersAndCommentsTest, LineCommentStopsAtALineFeedOutsideTheSet) {
  std::istringstream in("a// b\nc");
  in.get();
  char c = 0;
  EXPECT_FALSE(skipDelimitersAndComments(in, " ", &c));
  EXPECT_EQ(c, '\n');
  EXPECT_EQ(rest(in), "\nc");
}

TEST(SkipDelimitersAndCommentsTest, NullCharacterPointerIsAllowed) {
  std::istringstream in("  /* x */ y");
  EXPECT_FALSE(skipDelimitersAndComments(in, " "));
  EXPECT_EQ(rest(in), "y");
}

TEST(SkipWhitespaceToBarTest, Table) {
  struct Case {
    std::string input;
    bool result;
    std::string left;
  };
  const std::vector<Case> cases = {
      {"  | x", true, " x"}, {"|", true, ""}, {" /* c */ \n||", true, "|"},
      {"  x|", false, "x|"}, {"", false, ""}, {" // c\n", false, ""},
  };
  for (const Case& k : cases) {
    SCOPED_TRACE(k.input);
    std::istringstream in(k.input);
    EXPECT_EQ(skipWhitespaceToBar(in), k.result);
    EXPECT_EQ(rest(in), k.left);
  }
}

}  // namespace
}  // namespace lpconv
