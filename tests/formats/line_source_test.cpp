#include <lpconv/formats/line_source.h>

#include <gtest/gtest.h>
#include <zlib.h>

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace lpconv {
namespace {

std::vector<std::string> linesOf(LineSource& source) {
  std::vector<std::string> out;
  std::string_view line;
  while (source.next(line)) out.emplace_back(line);
  return out;
}

std::filesystem::path tempPath(const std::string& name) {
  return std::filesystem::temp_directory_path() /
         ("lpconv_line_source_" +
          std::to_string(::testing::UnitTest::GetInstance()->random_seed()) + "_" + name);
}

TEST(LineSource, CarriageReturnsAndALastLineWithoutLineFeed) {
  LineSource s = LineSource::fromText("m", "a\r\nb\n\nc\r");
  EXPECT_EQ(linesOf(s), (std::vector<std::string>{"a", "b", "", "c"}));
  EXPECT_EQ(s.lineNumber(), 4);
  LineSource empty = LineSource::fromText("m", "");
  EXPECT_TRUE(linesOf(empty).empty());
}

TEST(LineSource, LinesAcrossTheBufferBoundaryAndGzip) {
  // Lines longer than the first buffer (1 MiB) and lines that straddle its end.
  std::string text;
  std::vector<std::string> expected;
  for (int k = 0; k < 40; ++k) {
    std::string line(static_cast<std::size_t>(k * 70001 % 1500000),
                     static_cast<char>('a' + k % 26));
    expected.push_back(line);
    text += line + "\n";
  }
  const auto plain = tempPath("plain.lp");
  const auto packed = tempPath("packed.lp.gz");
  std::ofstream(plain, std::ios::binary) << text;
  gzFile gz = gzopen(packed.c_str(), "wb");
  ASSERT_NE(gz, nullptr);
  gzwrite(gz, text.data(), static_cast<unsigned>(text.size()));
  gzclose(gz);
  for (const auto& path : {plain, packed}) {
    LineSource s(path.string());
    EXPECT_EQ(linesOf(s), expected) << path;
  }
  std::filesystem::remove(plain);
  std::filesystem::remove(packed);
}

TEST(LineSource, PlaceOfAMessage) {
  LineSource s = LineSource::fromText("f.lp", "first\n  x <= y\n");
  std::string_view line;
  s.next(line);
  s.next(line);
  const Diagnostic d = s.diagnosticAt(Severity::error, line.substr(5), "bad");
  EXPECT_EQ(headline(d), "f.lp:2:6: error: bad");
  EXPECT_THROW(LineSource("/nonexistent/x.lp"), ParseError);
}

}  // namespace
}  // namespace lpconv
