#pragma once
// Large buffered writes to the output file, with cheap runs of one repeated item.

#include <string>
#include <string_view>
#include <vector>

#include "converter/coefficient.h"
#include "numbers/qq.h"

namespace lpconv {

class OutputBuffer {
 public:
  // Writes to `fd`, which stays owned by the caller. A failed write is not reported: like an
  // unchecked stream, the buffer stops writing and the run goes on.
  explicit OutputBuffer(int fd);
  ~OutputBuffer();
  OutputBuffer(const OutputBuffer&) = delete;
  OutputBuffer& operator=(const OutputBuffer&) = delete;

  void put(std::string_view text);
  void put(const QQ& value) {
    appendText(buffer_, value);
    flushIfFull();
  }
  void put(const Coefficient& value) {
    appendText(buffer_, value);
    flushIfFull();
  }
  // `count` copies of `item` (such as "0 " or "inf "), without building them one by one.
  void putRepeated(std::string_view item, long count);
  void flush();

 private:
  // A block of whole copies of `item`, kept for the next run of the same item.
  const std::string& blockOf(std::string_view item);
  void flushIfFull();
  void writeAll(const char* data, std::size_t size);

  int fd_;
  bool failed_ = false;
  std::string buffer_;
  std::vector<std::string> repeatBlocks_;
};

}  // namespace lpconv
