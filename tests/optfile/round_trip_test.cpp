// Every .opt file the converter is expected to write reads back and writes again byte for byte.

#include <lpconv/optfile/opt_file.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace lpconv {
namespace {

namespace fs = std::filesystem;

std::string contents(const fs::path& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

TEST(OptFileRoundTrip, EveryExpectedConverterOutput) {
  int checked = 0;
  for (const char* folder : {"tests/cli/cases", "examples/expected"}) {
    for (const auto& entry :
         fs::recursive_directory_iterator(fs::path(LPCONV_SOURCE_DIR) / folder)) {
      const fs::path& path = entry.path();
      // A failed conversion leaves an empty file behind; there is nothing to read.
      if (!entry.is_regular_file() || path.extension() != ".opt" || entry.file_size() == 0)
        continue;
      SCOPED_TRACE(path.string());
      const std::string text = contents(path);
      std::istringstream in(text);
      std::ostringstream out;
      out << readOptFile(in);
      EXPECT_EQ(out.str(), text);
      ++checked;
    }
  }
  // The cases that convert and the two examples.
  EXPECT_GE(checked, 20);
}

}  // namespace
}  // namespace lpconv
