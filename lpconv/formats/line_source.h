#pragma once
// The lines of an input file, plain or gzip-compressed (recognised by its content, not its
// name), or of standard input for "-". Lines are read through one buffer as they are needed, so
// a file of any size is read in the memory of its longest line.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <lpconv/formats/diagnostics.h>

namespace lpconv {

class LineSource {
 public:
  // Throws ParseError (without a line) when the file cannot be opened.
  explicit LineSource(const std::string& path);
  // The lines of a text held in memory, named `name` in messages (tests, fuzzing, callers that
  // have the bytes already).
  static LineSource fromText(std::string name, std::string_view text);
  ~LineSource();
  LineSource(const LineSource&) = delete;
  LineSource& operator=(const LineSource&) = delete;

  // The next line, without its line feed and without a carriage return before it; valid until
  // the next call. False at the end of the input. Throws ParseError when the input cannot be
  // read (a damaged compressed file, say).
  bool next(std::string_view& line);
  // The number of the line `next` returned last (1 for the first).
  long lineNumber() const { return lineNumber_; }
  // The name messages use: the path, or "<stdin>".
  const std::string& name() const { return name_; }
  // The line `next` returned last.
  std::string_view currentLine() const { return current_; }

  // A message about the current line at a 1-based column (0: the line as a whole).
  Diagnostic diagnostic(Severity severity, long column, std::string message) const;
  // A message about the current line at the place where `at` starts (a view into it).
  Diagnostic diagnosticAt(Severity severity, std::string_view at, std::string message) const;
  // Throws the error at that place.
  [[noreturn]] void fail(std::string_view at, std::string message) const;

 private:
  struct InMemory {};
  LineSource(InMemory, std::string name, std::string_view text);
  bool fill();

  std::string name_;
  void* file_ = nullptr;  // the zlib handle
  std::vector<char> buffer_;
  std::size_t begin_ = 0;  // the unread text is buffer_[begin_, end_)
  std::size_t end_ = 0;
  bool atEnd_ = false;
  long lineNumber_ = 0;
  std::string_view current_;
};

}  // namespace lpconv
