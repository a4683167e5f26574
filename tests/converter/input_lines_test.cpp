#include <lpconv/converter/input_lines.h>

#include <gtest/gtest.h>

#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "temp_file.h"

namespace lpconv {
namespace {

std::vector<std::string> getlineLines(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}

std::vector<std::string> readerLines(InputLines& reader) {
  std::vector<std::string> lines;
  std::string_view line;
  while (reader.next(line)) lines.emplace_back(line);
  return lines;
}

TEST(InputLinesTest, EdgeTexts) {
  const std::vector<std::pair<std::string, std::vector<std::string>>> cases = {
      {"", {}},
      {"\n", {""}},
      {"a", {"a"}},
      {"a\n", {"a"}},
      {"a\n\nb", {"a", "", "b"}},
      {"\r\n", {"\r"}},
      {"x1 <= 4\r\nEnd\r\n", {"x1 <= 4\r", "End\r"}},
  };
  testing::TempFile file;
  for (const auto& [text, expected] : cases) {
    file.write(text);
    InputLines reader(file.fd());
    EXPECT_EQ(readerLines(reader), expected);
  }
}

// The reader must give the stream line reader's lines for every buffer size, including lines
// longer than the buffer and line feeds on buffer boundaries, and again after every rewind.
TEST(InputLinesTest, AgreesWithGetlineForEveryBufferSize) {
  std::mt19937 engine(7);
  std::uniform_int_distribution<int> length(0, 300);
  std::uniform_int_distribution<int> pick(0, 9);
  testing::TempFile file;
  for (int round = 0; round < 200; ++round) {
    std::string text;
    for (int i = length(engine); i > 0; --i) {
      const int p = pick(engine);
      text += p < 2 ? '\n' : p == 2 ? '\r' : static_cast<char>('a' + p);
    }
    file.write(text);
    const std::vector<std::string> expected = getlineLines(text);
    for (const std::size_t bufferSize : {1u, 2u, 3u, 7u, 64u, 4096u}) {
      ::lseek(file.fd(), 0, SEEK_SET);  // the reader starts where the descriptor stands
      InputLines reader(file.fd(), bufferSize);
      ASSERT_EQ(readerLines(reader), expected) << bufferSize;
      reader.rewind();
      ASSERT_EQ(readerLines(reader), expected) << bufferSize << " after rewind";
    }
  }
}

TEST(InputLinesTest, AnUnseekableInputReadsNothingAfterRewind) {
  int fds[2];
  ASSERT_EQ(::pipe(fds), 0);
  ASSERT_EQ(::write(fds[1], "a\nb\n", 4), 4);
  ::close(fds[1]);
  InputLines reader(fds[0]);
  EXPECT_EQ(readerLines(reader), (std::vector<std::string>{"a", "b"}));
  reader.rewind();
  EXPECT_TRUE(readerLines(reader).empty());
  ::close(fds[0]);
}

}  // namespace
}  // namespace lpconv
