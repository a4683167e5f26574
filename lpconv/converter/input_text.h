#pragma once
// The LP file as one text, read from the start by every pass, and the line reader over it.

#include <string>
#include <string_view>

namespace lpconv {

// The whole input, mapped when it is a regular file and read otherwise. The descriptor stays owned
// by the caller. An input that cannot seek (a pipe) is seen whole by the first pass only: every
// later pass reads nothing, as a stream whose rewind failed reads nothing more. A read error
// counts as the end of the input.
class InputText {
 public:
  explicit InputText(int fd);
  ~InputText();
  InputText(const InputText&) = delete;
  InputText& operator=(const InputText&) = delete;

  std::string_view firstPass() const { return text_; }
  std::string_view laterPass() const { return seekable_ ? text_ : std::string_view(); }

 private:
  std::string_view text_;
  void* mapped_ = nullptr;
  std::string read_;  // the text when it could not be mapped
  bool seekable_ = true;
};

// The lines of a text with the stream line reader's rules: the line feed ends a line and is not
// part of it, a carriage return stays in its line, a last line without a line feed is a line, and
// a final line feed adds no empty line.
class Lines {
 public:
  explicit Lines(std::string_view text, std::size_t from = 0) : text_(text), next_(from) {}

  // The next line; false at the end of the text.
  bool next(std::string_view& line);
  // Where the next line starts.
  std::size_t position() const { return next_; }

 private:
  std::string_view text_;
  std::size_t next_;
};

}  // namespace lpconv
