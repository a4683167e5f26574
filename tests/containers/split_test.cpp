#include <lpconv/containers/split.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "test_support.h"

namespace lpconv {
namespace {

TEST(SplitTest, Table) {
  struct Case {
    std::string text;
    char delimiter;
    std::vector<std::string> pieces;
  };
  const std::vector<Case> cases = {
      {"a,,b,", ',', {"a", "", "b"}},
      {"", ',', {}},
      {",", ',', {""}},
      {",,", ',', {"", ""}},
      {",a", ',', {"", "a"}},
      {"abc", ',', {"abc"}},
      {"a,b", ';', {"a,b"}},
      {"x1 x2  x3", ' ', {"x1", "x2", "", "x3"}},
      {"line\n", '\n', {"line"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.text);
    const Array<String> pieces = split(c.text, c.delimiter);
    EXPECT_EQ(testing_support::contents(pieces), c.pieces);
  }
}

}  // namespace
}  // namespace lpconv
