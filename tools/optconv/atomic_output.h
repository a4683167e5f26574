#pragma once
// An output file written in full or not at all: the text goes to a temporary file beside the
// target, which replaces the target only when everything was written. Standard output ("-") is
// written directly.

#include <fstream>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

namespace lpconv {

class AtomicOutput {
 public:
  // Creates the temporary file; throws ParseError (about `path`, without a line) when it cannot.
  explicit AtomicOutput(const std::string& path);
  // Removes the temporary file unless commit() renamed it.
  ~AtomicOutput();
  AtomicOutput(const AtomicOutput&) = delete;
  AtomicOutput& operator=(const AtomicOutput&) = delete;

  std::ostream& stream() { return *stream_; }
  // Flushes and closes the file; throws ParseError when anything failed to be written.
  void finish();
  // Puts the finished file in place of the target.
  void commit();

 private:
  [[noreturn]] void fail(const std::string& why) const;

  std::string path_;
  std::string temporary_;
  std::vector<char> buffer_;
  std::unique_ptr<std::ofstream> file_;
  std::ostream* stream_ = nullptr;
};

}  // namespace lpconv
