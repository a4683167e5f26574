#pragma once
// Messages with a place: "FILE:LINE:COLUMN: error|warning|note: text", then the line itself and a
// caret under the column. The first error of a read ends it (ParseError); warnings and notes go
// to a sink as they are found.

#include <cstddef>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace lpconv {

enum class Severity { note, warning, error };

struct Diagnostic {
  Severity severity = Severity::error;
  std::string file;
  long line = 0;    // 1-based; 0 when the message is about the file as a whole
  long column = 0;  // 1-based byte column; 0 when it is about the line as a whole
  std::string message;
  std::string sourceLine;  // the text of the line, shown under the message when line > 0
};

// "error", "warning" or "note".
const char* severityWord(Severity severity);

// The first line alone: "FILE:LINE:COLUMN: error: text" (the column, then the line, left out
// where they are 0).
std::string headline(const Diagnostic& d);

// The full text: the headline, then (for a message with a line) the line and a caret under its
// column, each ending in a line feed. Tabs before the column are kept in the caret line, so the
// caret stands under its character in a terminal.
std::string format(const Diagnostic& d);

// The error that ends a read; what() is the headline.
class ParseError : public std::runtime_error {
 public:
  explicit ParseError(Diagnostic diagnostic);
  const Diagnostic& diagnostic() const { return diagnostic_; }

 private:
  Diagnostic diagnostic_;
};

class DiagnosticSink {
 public:
  virtual ~DiagnosticSink() = default;
  virtual void report(const Diagnostic& d) = 0;
};

// Writes each message in full to a stream, as it comes.
class StreamSink : public DiagnosticSink {
 public:
  explicit StreamSink(std::ostream& os) : os_(os) {}
  void report(const Diagnostic& d) override;
  std::size_t warnings() const { return warnings_; }
  std::size_t notes() const { return notes_; }

 private:
  std::ostream& os_;
  std::size_t warnings_ = 0;
  std::size_t notes_ = 0;
};

// Keeps every message.
class CollectingSink : public DiagnosticSink {
 public:
  void report(const Diagnostic& d) override { messages.push_back(d); }
  std::vector<Diagnostic> messages;
};

}  // namespace lpconv
