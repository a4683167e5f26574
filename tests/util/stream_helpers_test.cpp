#include <gtest/gtest.h>
#include <lpconv/util/stream_helpers.h>

#include <iterator>
#include <sstream>
#include <string>

namespace lpconv {
namespace {

// Runs one helper over input: 'c' skipComment, 'a' skipDelimiters(all), 'o' skipDelimiters(one),
// 'd' skipDelimitersAndComments, 'b' skipWhitespaceToBar. Returns "result|stored char|what is
// left in the buffer|bad" (the stored char 255, the end, as "$").
std::string run(char helper, const std::string& input, const std::string& set = " \t\r\n") {
  std::istringstream in(input);
  char c = 0;
  const bool result = helper == 'c'   ? skipComment(in, c)
                      : helper == 'a' ? skipDelimiters(in, set, true, c)
                      : helper == 'o' ? skipDelimiters(in, set, false, c)
                      : helper == 'd' ? skipDelimitersAndComments(in, set, &c)
                                      : (c = '-', skipWhitespaceToBar(in));
  const std::string left(std::istreambuf_iterator<char>(in.rdbuf()), {});
  return std::string(result ? "1|" : "0|") + (c == static_cast<char>(255) ? '$' : c) + "|" + left +
         (in.bad() ? "|bad" : "");
}

TEST(StreamHelpersTest, Outcomes) {
  const std::tuple<char, const char*, const char*> cases[] = {
      {'c', "x", "0|x|x"},
      {'c', "", "0|$|"},
      {'c', "// note\n5", "1|\n|\n5"},
      {'c', "// to the end", "1|$|"},
      {'c', "/**/7", "1|7|7"},
      {'c', "/* a ** b **/ 7", "1| | 7"},
      {'c', "/*/ inside */x", "1|x|x"},
      {'c', "/* never closed *", "1|$|"},
      {'c', "/* a */ /* b */", "1| | /* b */"},
      {'c', "/x1", "0|x|x1|bad"},  // the lone slash: putback refused by a read-only buffer
      {'c', "/", "0|$||bad"},
      {'a', "  \t x", "0|x|x"},
      {'a', "   ", "0|$|"},
      {'a', "\n x", "0|x|x"},
      {'o', "  x", "1| | x"},
      {'o', "x ", "0|x|x "},
      {'o', "", "0|$|"},
      {'d', " \t\r\n x", "0|x|x"},
      {'d', "  /* a */ // b\n /* c */\t]", "0|]|]"},
      {'d', " /* open", "0|$|"},
      {'d', " 5 // after", "0|5|5 // after"},
      {'b', "  | x", "1|-| x"},
      {'b', " /* c */ \n||", "1|-||"},
      {'b', "  x|", "0|-|x|"},
      {'b', " // c\n", "0|-|"}};
  for (const auto& [helper, input, expected] : cases) {
    EXPECT_EQ(run(helper, input), expected) << helper << " " << input;
  }
  EXPECT_EQ(run('d', "a// b\nc", " ").substr(0, 4), "0|a|");
  // On a read-write buffer the lone slash is overwritten: the next character is read twice.
  std::stringstream rw("/x1");
  char c = 0;
  EXPECT_FALSE(skipComment(rw, c));
  EXPECT_EQ(rw.rdbuf()->str().substr(static_cast<std::size_t>(rw.tellg())), "xx1");
}

// Long runs of every shape the loops walk through end with the result of a short one.
TEST(StreamHelpersTest, LongInputs) {
  const std::string many(1000000, ' ');
  EXPECT_EQ(run('d', "/*" + many), "0|$|");
  EXPECT_EQ(run('d', many + "x"), "0|x|x");
  std::string comments;
  for (int i = 0; i < 100000; ++i) comments += "/**/ // c\n";
  EXPECT_EQ(run('d', comments + "]"), "0|]|]");
  EXPECT_EQ(run('c', "/*" + std::string(1000000, '*')), "1|$|");
}

}  // namespace
}  // namespace lpconv
