#pragma once
// The LP file as a sequence of lines, read again from the start for every pass.

#include <string>
#include <string_view>
#include <vector>

namespace lpconv {

// Reads a file descriptor line by line with the stream line reader's rules: the line feed ends a
// line and is not part of it, a carriage return stays in its line, a last line without a line
// feed is a line, and a final line feed adds no empty line. The descriptor stays owned by the
// caller.
class InputLines {
 public:
  // `bufferSize` only changes how often the file is read; lines longer than it still come whole.
  explicit InputLines(int fd, std::size_t bufferSize = 1 << 20);

  // The next line; false at end of input (a read error counts as end of input). The view stays
  // valid until the next call.
  bool next(std::string_view& line);

  // Back to the first line. When the input cannot seek (a pipe), it stays at its end, as a
  // stream whose seek failed reads nothing more.
  void rewind();

 private:
  bool fill();

  int fd_;
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // first unread byte in buffer_
  std::size_t end_ = 0;    // one past the last valid byte in buffer_
  bool atEnd_ = false;
  bool seekFailed_ = false;
  std::string longLine_;  // a line that does not fit the buffer is gathered here
};

}  // namespace lpconv
