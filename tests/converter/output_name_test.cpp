#include <lpconv/converter/output_name.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace lpconv {
namespace {

TEST(OutputNameTest, LooseLpEnding) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"model.lp", "model.opt"},   {"dir/a.lp", "dir/a.opt"}, {"a_lp", "a.opt"},
      {"modellp", "mode.opt"},     {"alp", ".opt"},           {"lp", "lp"},
      {"m.LP", "m.LP"},            {"model.txt", "model.txt"}, {"a.lp.bak", "a.lp.bak"},
      {"a\nlp", "a\nlp"},          {"a\rlp", "a\rlp"},        {"", ""},
      {"a.lp\n", "a.lp\n"},
  };
  for (const auto& [input, output] : cases) EXPECT_EQ(outputNameFor(input), output) << input;
}

}  // namespace
}  // namespace lpconv
