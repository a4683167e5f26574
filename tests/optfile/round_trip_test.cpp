// Every .opt file the converter is expected to write reads back and writes again byte for byte.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include <lpconv/optfile/opt_file.h>

namespace lpconv {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(OptFileRoundTrip, EveryExpectedConverterOutput) {
  const fs::path root = LPCONV_SOURCE_DIR;
  std::vector<fs::path> files;
  for (const auto& c : fs::directory_iterator(root / "tests/cli/cases")) {
    if (!fs::exists(c.path() / "expected")) continue;
    for (const auto& f : fs::directory_iterator(c.path() / "expected")) files.push_back(f.path());
  }
  for (const auto& f : fs::directory_iterator(root / "examples/expected")) files.push_back(f.path());
  int checked = 0;
  for (const fs::path& path : files) {
    // A failed conversion leaves an empty file behind; there is nothing to read.
    if (path.extension() != ".opt" || fs::file_size(path) == 0) continue;
    SCOPED_TRACE(path.string());
    const std::string text = contents(path);
    std::istringstream in(text);
    std::ostringstream out;
    out << readOptFile(in);
    EXPECT_EQ(out.str(), text);
    ++checked;
  }
  // The cases that convert and the two examples.
  EXPECT_GE(checked, 20);
}

}  // namespace
}  // namespace lpconv
